// Conversions between wide text, narrow text and numbers, for the log and for the comparison of names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace text {

// The text in the process's current C locale, up to its first zero unit and cut to as many bytes as `text` has units.
// Empty when a character has no form in that locale.
std::string WideToNarrow(std::u16string_view text);

// Each byte widened by itself, with its sign: 0xE9 gives the unit 0xFFE9. No code page is applied.
std::u16string NarrowToWide(std::string_view text);

// Each unit passed through the C library's tolower; units beyond a byte stay as they are.
std::u16string LowerWide(std::u16string text);

std::string IntToText(std::int32_t number);
std::string UintToText(std::uint32_t number);
std::string ULongToText(std::uint32_t number);
std::string Uint64ToText(std::uint64_t number);
// Six significant digits, as printf's %g gives them.
std::string DoubleToText(double number);
// "true" or "false".
std::string BoolToText(bool flag);

}  // namespace text
