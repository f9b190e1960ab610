#include "platform/virtual/description_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "platform/backend.h"
#include "text/utf.h"

namespace virtual_audio {

namespace {

using Json = nlohmann::json;

// Builds the value that the library's parser reads. The parser's own way would drop the first of two equal keys, and
// give no place for a number that is too large. Nothing here recurses, however deeply a text is nested.
class Builder final : public nlohmann::json_sax<Json> {
 public:
  explicit Builder(std::string_view text) : text_(text) {}

  Json Result() { return std::move(root_); }

  bool null() override { return Put(nullptr) != nullptr; }
  bool boolean(bool value) override { return Put(value) != nullptr; }
  bool number_integer(number_integer_t value) override { return Put(value) != nullptr; }
  bool number_unsigned(number_unsigned_t value) override { return Put(value) != nullptr; }
  bool number_float(number_float_t value, const string_t&) override { return Put(value) != nullptr; }
  bool string(string_t& value) override { return Put(std::move(value)) != nullptr; }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return Open(Json::object()); }
  bool end_object() override { return Close(); }
  bool start_array(std::size_t) override { return Open(Json::array()); }
  bool end_array() override { return Close(); }

  bool key(string_t& key) override {
    const bool isThere = open_.back().container->contains(key);
    open_.back().key = std::move(key);
    if (isThere) RefuseAt(Path(), "stands there twice");
    return true;
  }

  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override {
    constexpr int kOutOfRange = 406;
    constexpr std::size_t kMostQuoted = 200;
    // The position is behind the last byte that was read, and that may be the end of the text.
    const std::string_view before = text_.substr(0, std::min(position - 1, text_.size()));
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    const std::size_t column = before.size() - (before.find_last_of('\n') + 1) + 1;
    // What the library says begins with its own idea of the place.
    const std::string_view says = error.what();
    RefuseAt("line " + std::to_string(line) + ", column " + std::to_string(column),
             error.id == kOutOfRange ? "a number is too large"
                                     : "not JSON: " + std::string(says.substr(says.find(": ") + 2, kMostQuoted)));
  }

 private:
  // An object or a list whose end has not been read.
  struct Level {
    Json* container;
    std::string key;  // of the member that was read last
  };

  // Puts the value where the text has it. It stays at the address until its container gets another.
  Json* Put(Json value) {
    if (open_.empty()) return &(root_ = std::move(value));
    Json& container = *open_.back().container;
    if (container.is_object()) return &(container[open_.back().key] = std::move(value));
    container.push_back(std::move(value));
    return &container.back();
  }

  bool Open(Json container) {
    open_.push_back({Put(std::move(container)), {}});
    return true;
  }

  bool Close() {
    open_.pop_back();
    return true;
  }

  std::string Path() const {
    std::string path;
    for (const Level& level : open_) {
      path = level.container->is_object() ? PathOfMember(path, level.key)
                                          : PathOfElement(path, level.container->size() - 1);
    }
    return path;
  }

  const std::string_view text_;
  Json root_;
  std::vector<Level> open_;
};

}  // namespace

Json ReadJson(std::string_view text) {
  Builder builder(text);
  Json::sax_parse(text, &builder);
  return builder.Result();
}

void RefuseAt(const std::string& place, std::string_view reason) {
  // It may quote what isn't valid UTF-8.
  throw platform::PlatformError(
      text::ValidUtf8((place.empty() ? "the description" : place) + ": " + std::string(reason)));
}

std::string PathOfMember(const std::string& path, std::string_view key) {
  return path.empty() ? std::string(key) : path + '.' + std::string(key);
}

std::string PathOfElement(const std::string& path, std::size_t index) {
  return path + '[' + std::to_string(index) + ']';
}

}  // namespace virtual_audio
