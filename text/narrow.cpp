#include "text/narrow.h"

#include <cctype>
#include <climits>
#include <sstream>

namespace text {

std::u16string NarrowToWide(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  for (const char byte : text) wide.push_back(static_cast<char16_t>(static_cast<signed char>(byte)));
  return wide;
}

std::u16string LowerWide(std::u16string text) {
  for (char16_t& unit : text) {
    if (unit <= UCHAR_MAX) unit = static_cast<char16_t>(std::tolower(unit));
  }
  return text;
}

std::string DoubleToText(double number) {
  std::ostringstream stream;
  stream << number;
  return std::move(stream).str();
}

}  // namespace text
