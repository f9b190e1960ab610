#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace text {

// Every narrow text in rmthost is UTF-8. UTF-16 is met only at the module and at the platform's operations.

// Unpaired surrogates come out as U+FFFD.
std::string ToUtf8(std::u16string_view text);
// `text` must be valid UTF-8.
std::u16string ToUtf16(std::string_view text);

// The text in the bytes of a file: UTF-8 with or without a byte order mark, or UTF-16LE with one. Nothing when the
// bytes are neither.
std::optional<std::string> DecodeText(std::string bytes);

// Bytes that aren't UTF-8, as a command line can hold, come out as U+FFFD.
std::string ValidUtf8(std::string_view text);

std::filesystem::path PathFromUtf8(std::string_view path);
std::string Utf8FromPath(const std::filesystem::path& path);

// Folds A to Z only: names are compared as the module compares ids, whatever the locale.
std::string LowerAscii(std::string_view text);

// At most `bytes` bytes of `text`, in whole characters, with "..." for the rest. `text` must be valid UTF-8.
std::string Shortened(std::string_view text, std::size_t bytes);

// `text` without control characters, which could steer the terminal.
std::string Printable(std::string_view text);

}  // namespace text
