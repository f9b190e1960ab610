// Conversions between wide text, narrow text and numbers, for the log and for the comparison of names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace text {

// The text in the process's current C locale, up to its first zero unit and cut to as many bytes as `text` has units.
// Empty if a character has no form in that locale.
std::string WideToNarrow(std::u16string_view text);

// Each byte widened by itself, with its sign: 0xE9 gives the unit 0xFFE9. No code page is applied.
std::u16string NarrowToWide(std::string_view text);

// Each unit passed through the C library's tolower; units beyond a byte stay as they are.
std::u16string LowerWide(std::u16string text);

// Numbers in decimal.
inline std::string IntToText(std::int32_t number) { return std::to_string(number); }
inline std::string UintToText(std::uint32_t number) { return std::to_string(number); }
inline std::string Uint64ToText(std::uint64_t number) { return std::to_string(number); }
// With six significant digits, as %g of printf gives them.
std::string DoubleToText(double number);
// "true" or "false".
inline std::string BoolToText(bool flag) { return flag ? "true" : "false"; }

}  // namespace text
