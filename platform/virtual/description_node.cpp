#include "platform/virtual/description_node.h"

#include <algorithm>

#include "platform/virtual/description_json.h"

namespace virtual_audio {

namespace {

using Kind = JsonValue::Kind;

std::string Shown(const JsonValue& value) {
  constexpr std::size_t kMostShown = 80;
  if (value.kind != Kind::kScalar) return value.kind == Kind::kObject ? "an object" : "a list";
  const std::string text = value.scalar.dump();
  return text.size() > kMostShown ? "a long text" : text;
}

std::string InQuotes(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string Listed(std::span<const std::string_view> words) {
  std::string list;
  for (const std::string_view word : words) list += (list.empty() ? "" : ", ") + InQuotes(word);
  return list;
}

}  // namespace

void Node::AllowKeys(std::span<const std::string_view> keys) const {
  if (value_->kind != Kind::kObject) Expect("an object");
  for (const auto& [key, value] : value_->members) {
    if (std::find(keys.begin(), keys.end(), key) != keys.end()) continue;
    RefuseAt(PathOfMember(path_, key), "is not a key; the keys here are " + Listed(keys));
  }
}

Node Node::operator[](std::string_view key) const {
  const auto member = value_->members.find(key);
  return Node(member == value_->members.end() ? nullptr : member->second, PathOfMember(path_, key));
}

bool Node::IsNull() const { return IsThere() && value_->kind == Kind::kScalar && value_->scalar.is_null(); }

bool Node::IsText(std::string_view text) const { return IsThere() && value_->scalar == text; }

std::string Node::Text() const {
  MustBeThere();
  if (!value_->scalar.is_string()) Expect("a text");
  const auto& text = value_->scalar.get_ref<const std::string&>();
  if (text.find('\0') != text.npos) Refuse("must be Unicode text without a zero character");
  return text;
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
  // The bounds are exact as doubles, and a number above the 64 bits isn't within them.
  if (!value_->scalar.is_number_integer() || value_->scalar.get<double>() < static_cast<double>(lowest) ||
      value_->scalar.get<double>() > static_cast<double>(highest)) {
    Expect("a whole number from " + std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return value_->scalar.get<std::int64_t>();
}

double Node::NumberOr(double otherwise, double lowest, double highest) const {
  if (!IsThere()) return otherwise;
  if (!value_->scalar.is_number() || value_->scalar.get<double>() < lowest || value_->scalar.get<double>() > highest) {
    Expect("a number from " + Shown({.scalar = lowest}) + " to " + Shown({.scalar = highest}));
  }
  return value_->scalar.get<double>();
}

bool Node::BooleanOr(bool otherwise) const {
  if (!IsThere()) return otherwise;
  if (!value_->scalar.is_boolean()) Expect("true or false");
  return value_->scalar.get<bool>();
}

std::vector<Node> Node::Elements() const {
  std::vector<Node> elements;
  if (!IsThere()) return elements;
  if (value_->kind != Kind::kList) Expect("a list");
  for (const JsonValue* element : value_->elements)
    elements.emplace_back(element, PathOfElement(path_, elements.size()));
  return elements;
}

void Node::MustBeThere() const {
  if (!IsThere()) Refuse("must be given");
}

void Node::Refuse(std::string_view reason) const { RefuseAt(path_, reason); }

void Node::Expect(const std::string& what) const { Refuse("must be " + what + ", not " + Shown(*value_)); }

}  // namespace virtual_audio
