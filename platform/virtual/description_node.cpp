#include "platform/virtual/description_node.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utf8/checked.h>
#include <algorithm>
#include <iterator>

#include "platform/platform.h"

namespace virtual_audio {

namespace {

std::string_view TextOf(const rapidjson::Value& value) {
  return {value.GetString(), value.GetStringLength()};
}

std::string Shown(const rapidjson::Value& value) {
  constexpr rapidjson::SizeType kMostShown = 80;
  if (value.IsObject()) return "an object";
  if (value.IsArray()) return "a list";
  if (value.IsString() && value.GetStringLength() > kMostShown) return "a long text";
  rapidjson::StringBuffer text;
  rapidjson::Writer<rapidjson::StringBuffer> writer(text);
  return value.Accept(writer) ? text.GetString() : "a number that is too large";
}

std::string InQuotes(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::string Listed(std::span<const std::string_view> words) {
  std::string list;
  for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + InQuotes(word);
  return list;
}

}  // namespace

void Node::AllowKeys(std::span<const std::string_view> keys) const {
  if (!value_->IsObject()) Expect("an object");
  std::vector<bool> seen(keys.size());
  for (auto member = value_->MemberBegin(); member != value_->MemberEnd(); ++member) {
    const auto key = static_cast<std::size_t>(std::find(keys.begin(), keys.end(), TextOf(member->name)) - keys.begin());
    const Node node(&member->value, PathOf(TextOf(member->name)));
    if (key == keys.size()) node.Refuse("is not a key; the keys here are " + Listed(keys));
    if (seen[key]) node.Refuse("stands there twice");
    seen[key] = true;
  }
}

Node Node::operator[](std::string_view key) const {
  for (auto member = value_->MemberBegin(); member != value_->MemberEnd(); ++member) {
    if (TextOf(member->name) == key) return Node(&member->value, PathOf(key));
  }
  return Node(nullptr, PathOf(key));
}

bool Node::IsText(std::string_view text) const {
  return value_ != nullptr && value_->IsString() && TextOf(*value_) == text;
}

std::string Node::Text() const {
  MustBeThere();
  if (!value_->IsString()) Expect("a text");
  const std::string_view text = TextOf(*value_);
  if (text.find('\0') != std::string_view::npos || utf8::find_invalid(text.begin(), text.end()) != text.end()) {
    Refuse("must be Unicode text without a zero character");
  }
  return std::string(text);
}

std::size_t Node::Choice(std::span<const std::string_view> words) const {
  MustBeThere();
  const auto word = std::find_if(words.begin(), words.end(), [this](std::string_view one) { return IsText(one); });
  if (word == words.end()) Expect("one of " + Listed(words));
  return static_cast<std::size_t>(word - words.begin());
}

std::size_t Node::ChoiceOr(std::size_t otherwise, std::span<const std::string_view> words) const {
  return IsThere() ? Choice(words) : otherwise;
}

std::int64_t Node::WholeNumberOr(std::int64_t otherwise, std::int64_t lowest, std::int64_t highest) const {
  if (!IsThere()) return otherwise;
  if (!value_->IsInt64() || value_->GetInt64() < lowest || value_->GetInt64() > highest) {
    Expect("a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return value_->GetInt64();
}

double Node::NumberOr(double otherwise, double lowest, double highest) const {
  if (!IsThere()) return otherwise;
  if (!value_->IsNumber() || value_->GetDouble() < lowest || value_->GetDouble() > highest) {
    Expect("a number from " + Shown(rapidjson::Value(lowest)) + " to " + Shown(rapidjson::Value(highest)));
  }
  return value_->GetDouble();
}

bool Node::BooleanOr(bool otherwise) const {
  if (!IsThere()) return otherwise;
  if (!value_->IsBool()) Expect("true or false");
  return value_->GetBool();
}

std::vector<Node> Node::Elements() const {
  std::vector<Node> elements;
  if (!IsThere()) return elements;
  if (!value_->IsArray()) Expect("a list");
  elements.reserve(value_->Size());
  for (const auto& element : value_->GetArray()) {
    elements.emplace_back(&element, path_ + '[' + std::to_string(elements.size()) + ']');
  }
  return elements;
}

void Node::MustBeThere() const {
  if (!IsThere()) Refuse("must be given");
}

void Node::Refuse(std::string_view reason) const {
  const std::string sentence = (path_.empty() ? "the description" : path_) + ": " + std::string(reason);
  // It may quote what isn't valid UTF-8.
  std::string readable;
  utf8::replace_invalid(sentence.begin(), sentence.end(), std::back_inserter(readable));
  throw platform::PlatformError(readable);
}

std::string Node::PathOf(std::string_view key) const {
  return path_.empty() ? std::string(key) : path_ + '.' + std::string(key);
}

void Node::Expect(const std::string& what) const {
  Refuse("must be " + what + ", not " + Shown(*value_));
}

}  // namespace virtual_audio
