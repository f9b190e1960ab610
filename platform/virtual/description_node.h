#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace virtual_audio {

struct JsonValue;

// A value in a description, or the lack of one, together with the path at which it stands. Reading a value as something
// that it isn't throws platform::PlatformError with a sentence that begins with that path.
class Node {
 public:
  // A null pointer is a value that isn't there.
  Node(const JsonValue* value, std::string path) : value_(value), path_(std::move(path)) {}

  // Makes sure that this is an object with no other keys than these.
  void AllowKeys(std::span<const std::string_view> keys) const;
  // The member of this object, which may be absent.
  Node operator[](std::string_view key) const;

  bool IsThere() const { return value_ != nullptr; }
  bool IsNull() const;
  bool IsText(std::string_view text) const;

  // UTF-8 without a zero character. It must be there.
  std::string Text() const;
  // The place of the text in `words`. It must be there.
  std::size_t Choice(std::span<const std::string_view> words) const;
  // These give `otherwise` when the value is absent.
  std::size_t ChoiceOr(std::size_t otherwise, std::span<const std::string_view> words) const;
  std::int64_t WholeNumberOr(std::int64_t otherwise, std::int64_t lowest, std::int64_t highest) const;
  double NumberOr(double otherwise, double lowest, double highest) const;
  bool BooleanOr(bool otherwise) const;
  // An empty list when the value is absent.
  std::vector<Node> Elements() const;

  // For a value that is of the right kind and still can't be used.
  [[noreturn]] void Refuse(std::string_view reason) const;
  void MustBeThere() const;

 private:
  // Says what was expected, and what is there instead.
  [[noreturn]] void Expect(const std::string& what) const;

  const JsonValue* value_;
  std::string path_;
};

}  // namespace virtual_audio
