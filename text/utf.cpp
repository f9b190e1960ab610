#include "text/utf.h"

#include <utf8/cpp17.h>

#include <cstdio>

namespace text {
namespace {

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

std::optional<std::string> FromUtf16LittleEndian(std::string_view bytes) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  std::u16string units(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    const auto low = static_cast<unsigned char>(bytes[2 * i]), high = static_cast<unsigned char>(bytes[2 * i + 1]);
    units[i] = static_cast<char16_t>(low | high << 8);
  }
  try {
    return utf8::utf16to8(units);
  } catch (const utf8::exception&) {
    return std::nullopt;
  }
}

// Whether it is neither a control character (general category Cc), nor a separator of lines (Zl, Zp), nor one of the
// characters that the Unicode Bidirectional Algorithm (UAX #9) calls explicit formatting.
bool IsPrintable(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
  const bool isSeparatorOrEmbedding = c >= 0x2028 && c <= 0x202E;
  const bool isMark = c == 0x061C || c == 0x200E || c == 0x200F;
  const bool isIsolate = c >= 0x2066 && c <= 0x2069;
  return !isControl && !isSeparatorOrEmbedding && !isMark && !isIsolate;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::u16string units(text);
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
      ++i;
    } else if (IsHighSurrogate(units[i]) || IsLowSurrogate(units[i])) {
      units[i] = u'\uFFFD';
    }
  }
  return utf8::utf16to8(units);
}

std::u16string ToUtf16(std::string_view text) { return utf8::utf8to16(text); }

std::optional<std::string> DecodeText(std::string bytes) {
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16LittleEndian(std::string_view(bytes).substr(2));
  if (!utf8::is_valid(std::string_view(bytes))) return std::nullopt;
  if (utf8::starts_with_bom(std::string_view(bytes))) bytes.erase(0, 3);
  return bytes;
}

std::string ValidUtf8(std::string_view text) { return utf8::replace_invalid(text); }

std::filesystem::path PathFromUtf8(std::string_view path) { return std::u8string(path.begin(), path.end()); }

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string Shortened(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return std::string(text);
  const auto isInsideCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
  while (bytes > 0 && isInsideCharacter(text[bytes])) --bytes;
  return std::string(text.substr(0, bytes)) + "...";
}

std::string Printable(std::string_view text) {
  std::string printable;
  for (const char32_t character : utf8::utf8to32(ValidUtf8(text))) {
    if (IsPrintable(character)) {
      utf8::append(character, printable);
    } else {
      char shown[16];
      std::snprintf(shown, sizeof shown, "<U+%04X>", static_cast<unsigned>(character));
      printable += shown;
    }
  }
  return printable;
}

}  // namespace text
