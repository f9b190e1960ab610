#include "host/contract/parsed_contract.h"

#include <rapidjson/reader.h>

#include <charconv>
#include <cstdlib>

namespace host {

const rapidjson::Value* FindMember(const rapidjson::Value* object, std::string_view key) {
  if (object == nullptr || !object->IsObject()) return nullptr;
  const rapidjson::Value name(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size())));
  const auto member = object->FindMember(name);
  return member == object->MemberEnd() ? nullptr : &member->value;
}

ParsedContract::ParsedContract(std::string text)
    : text_(std::move(text)), parsed_(text_.c_str(), text_.c_str() + text_.size() + 1) {
  auto parse = [this](rapidjson::Document&) {
    rapidjson::InsituStringStream stream(parsed_.data());
    rapidjson::Reader reader;
    isJson_ = !reader.Parse<kParseFlags | rapidjson::kParseInsituFlag>(stream, tree_).IsError();
    return isJson_;
  };
  tree_.Populate(parse);
}

const rapidjson::Value* ParsedContract::CoreData() const {
  const rapidjson::Value* core = FindMember(&tree_, "CoreData");
  return core != nullptr && core->IsObject() ? core : nullptr;
}

std::string ParsedContract::With(std::string_view member, const rapidjson::Value& object) const {
  // The first key still lies where it stood in the text, so its place gives that of its opening quote.
  const auto quote = static_cast<std::size_t>(object.MemberBegin()->name.GetString() - parsed_.data()) - 1;
  std::string text;
  text.reserve(text_.size() + member.size() + 1);
  return text.append(text_, 0, quote).append(member).append(",").append(text_, quote);
}

bool ParsedContract::Tree::RawNumber(const char* text, rapidjson::SizeType length, bool) {
  const std::string_view number(text, length);
  if (number.find_first_of(".eE") == number.npos) {
    std::int64_t integer = 0;
    if (std::from_chars(text, text + length, integer).ec == std::errc()) return Int64(integer);
    std::uint64_t natural = 0;
    if (std::from_chars(text, text + length, natural).ec == std::errc()) return Uint64(natural);
  }
  // Behind the number stands what can't be part of one. The process is in the C locale, whose point is JSON's.
  return Double(std::strtod(text, nullptr));
}

}  // namespace host
