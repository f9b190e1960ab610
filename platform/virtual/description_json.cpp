#include "platform/virtual/description_json.h"

#include <algorithm>
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
  Builder(std::string_view text, JsonTree& tree) : text_(text), tree_(tree) {}

  bool null() override { return Put({}); }
  bool boolean(bool value) override { return Put({.scalar = value}); }
  bool number_integer(number_integer_t value) override { return Put({.scalar = value}); }
  bool number_unsigned(number_unsigned_t value) override { return Put({.scalar = value}); }
  bool number_float(number_float_t value, const string_t&) override { return Put({.scalar = value}); }
  bool string(string_t& value) override { return Put({.scalar = std::move(value)}); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return Open(JsonValue::Kind::kObject); }
  bool end_object() override { return Close(); }
  bool start_array(std::size_t) override { return Open(JsonValue::Kind::kList); }
  bool end_array() override { return Close(); }

  bool key(string_t& key) override {
    const bool isThere = open_.back().container->members.contains(key);
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
    JsonValue* container;
    std::string key;  // of the member that was read last
  };

  // Puts the value where the text has it.
  bool Put(JsonValue value) {
    const JsonValue& put = tree_.emplace_back(std::move(value));
    if (open_.empty()) return true;
    JsonValue& container = *open_.back().container;
    if (container.kind == JsonValue::Kind::kObject) {
      container.members.emplace(open_.back().key, &put);
    } else {
      container.elements.push_back(&put);
    }
    return true;
  }

  bool Open(JsonValue::Kind kind) {
    Put({.kind = kind});
    open_.push_back({&tree_.back(), {}});
    return true;
  }

  bool Close() {
    open_.pop_back();
    return true;
  }

  std::string Path() const {
    std::string path;
    for (const Level& level : open_) {
      path = level.container->kind == JsonValue::Kind::kObject
                 ? PathOfMember(path, level.key)
                 : PathOfElement(path, level.container->elements.size() - 1);
    }
    return path;
  }

  const std::string_view text_;
  JsonTree& tree_;
  std::vector<Level> open_;
};

}  // namespace

JsonTree ReadJson(std::string_view text) {
  JsonTree tree;
  Builder builder(text, tree);
  Json::sax_parse(text, &builder);
  return tree;
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
