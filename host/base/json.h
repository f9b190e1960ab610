#pragma once

#include <concepts>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "host/base/member.h"

// How the host's records become JSON and come back. Only sources that read or write JSON include this. The
// library's parser and writer are large, so that what can goes through the functions that json.cpp compiles.
namespace host {

// Keeps the order of members.
using Json = nlohmann::ordered_json;

template <class Record>
concept HasMembers = requires {
  Record::Members();
};

template <HasMembers Record>
void to_json(Json& json, const Record& record) {
  json = Json::object();
  std::apply([&](const auto&... member) { ((json[member.key] = record.*member.value), ...); }, Record::Members());
}

// Throws Json::exception when a member is missing or of another type. Unknown members are passed over.
template <HasMembers Record>
void from_json(const Json& json, Record& record) {
  std::apply([&](const auto&... member) { (json.at(member.key).get_to(record.*member.value), ...); },
             Record::Members());
}

// An enumeration whose values have words is written as those.
template <class Enum>
requires requires(Enum value) {
  { Word(value) } -> std::same_as<const char*>;
}
void to_json(Json& json, Enum value) { json = Word(value); }

// Throws Json::exception for a text that isn't JSON.
Json ParseJson(std::string_view text);

// What TextOf wrote of a record; nothing for any other text.
template <class Record>
std::optional<Record> ReadJson(const std::string& text) {
  try {
    return ParseJson(text).get<Record>();
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

// On one line. Bytes that aren't UTF-8 come out as U+FFFD, numbers that JSON can't hold as null.
std::string TextOf(const Json& json);

// Puts a member at the end of an object that has members. Both it and the new value are JSON texts.
void AppendMember(std::string& object, const char* key, const std::string& value);

}  // namespace host

// Nothing is null.
template <class Value>
struct nlohmann::adl_serializer<std::optional<Value>> {
  static void to_json(host::Json& json, const std::optional<Value>& value) {
    if (value.has_value()) {
      json = *value;
    } else {
      json = nullptr;
    }
  }
  static void from_json(const host::Json& json, std::optional<Value>& value) {
    value = json.is_null() ? std::nullopt : std::optional(json.get<Value>());
  }
};
