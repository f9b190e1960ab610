// Conversions between UTF-8 and UTF-16, and what is done to texts in UTF-8.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace text {

// Unpaired surrogates become U+FFFD.
std::string ToUtf8(std::u16string_view text);
// `text` must be valid UTF-8.
std::u16string ToUtf16(std::string_view text);

// The text of a file with these bytes, which are UTF-8 with or without a byte order mark or UTF-16LE with one. Nothing
// if they are neither.
std::optional<std::string> DecodeText(std::string bytes);

// The text with U+FFFD in place of bytes that aren't UTF-8, which a command line can have.
std::string ValidUtf8(std::string_view text);

std::filesystem::path PathFromUtf8(std::string_view path);
std::string Utf8FromPath(const std::filesystem::path& path);

// Changes A to Z only, in every locale, as the module does when it compares ids.
std::string LowerAscii(std::string_view text);

// The whole characters of `text` that fit into `bytes` bytes, followed by "..." if that isn't all. `text` must be valid
// UTF-8.
std::string Shortened(std::string_view text, std::size_t bytes);

// `text` as it can be shown to people on a terminal or a page, in valid UTF-8. Control characters could steer a terminal,
// and those that change the direction of writing could make one name look like another. Each of them, and each separator of
// lines, comes out as its code point, such as "<U+202E>", so that nothing of the text is hidden. Bytes that aren't UTF-8
// become U+FFFD.
std::string Printable(std::string_view text);

}  // namespace text
