#pragma once

#include <rapidjson/document.h>

#include <string>
#include <string_view>
#include <vector>

namespace host {

// A number is taken as the text of it. Turning it into a double by itself, the parser reads out of bounds for some that
// are very long or very small, and at its normal precision isn't exact. The depth of a text that isn't ours must not
// become the depth of the stack.
inline constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;

// The first member called `key`, which is the one that the module reads too. Null when there is none, or when `object`
// is null or no object.
const rapidjson::Value* FindMember(const rapidjson::Value* object, std::string_view key);

// The text of a contract, or of a reply, together with its tree. Doubled members are all in the tree, in their order,
// and each number is the one that the text means, or infinite when that is too big.
class ParsedContract {
 public:
  // `text` must be valid UTF-8 without a NUL.
  explicit ParsedContract(std::string text);

  // Whether the text is JSON; without that the root is null.
  bool IsJson() const { return isJson_; }
  const std::string& Text() const { return text_; }
  rapidjson::Document& Root() { return tree_; }
  const rapidjson::Document& Root() const { return tree_; }
  // Null when the root holds no object of that name.
  const rapidjson::Value* CoreData() const;

  // The text with `member`, key and value, in front of the members of `object`: of doubled keys the module takes the
  // first. `object` must be of this tree, and not empty.
  std::string With(std::string_view member, const rapidjson::Value& object) const;

 private:
  struct Tree : rapidjson::Document {
    // Called by the parser.
    bool RawNumber(const char* text, rapidjson::SizeType length, bool copy);
  };

  std::string text_;
  std::vector<char> parsed_;  // the text again: the tree's strings lie in it, unescaped where they stood
  Tree tree_;
  bool isJson_ = false;
};

}  // namespace host
