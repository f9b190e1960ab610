#include <climits>
#include <cuchar>
#include <cwchar>

#include "text/narrow.h"

namespace text {

// The result is that of wcstombs_s on Windows, where wide characters have 16 bits too.
std::string WideToNarrow(std::u16string_view text) {
  text = text.substr(0, text.find(u'\0'));
  std::string narrow;
  narrow.reserve(text.size());
  std::mbstate_t state{};
  char bytes[MB_LEN_MAX];
  for (const char16_t unit : text) {
    const std::size_t count = std::c16rtomb(bytes, unit, &state);
    if (count == static_cast<std::size_t>(-1)) return {};
    if (narrow.size() + count > text.size()) break;
    narrow.append(bytes, count);
  }
  // The first half of a surrogate pair gives no bytes until the second comes. Without one it has no narrow form.
  if (std::mbsinit(&state) == 0) return {};
  return narrow;
}

}  // namespace text
