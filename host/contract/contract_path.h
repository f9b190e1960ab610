#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace host {

// The way from a contract's root to one of its values.
class ContractPath {
 public:
  using Step = std::variant<std::string_view, std::size_t>;  // the key of a member, or the position of an element

  // What Text() cuts a path down to, in bytes. Without it the paths in a text of very long keys or very deep nesting
  // could be longer in all than the square of the text.
  static constexpr std::size_t kLongestText = 300;

  // A key must outlive the path.
  void Push(Step step) { steps_.push_back(step); }
  void Pop() { steps_.pop_back(); }
  const std::vector<Step>& Steps() const { return steps_; }

  // As a JSON Pointer (RFC 6901); a longer one than kLongestText ends in "...".
  std::string Text() const;

 private:
  std::vector<Step> steps_;
};

}  // namespace host
