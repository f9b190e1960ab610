#include <cstdlib>
#include <string>

#include "text/narrow.h"

namespace text {

std::string WideToNarrow(std::u16string_view text) {
  const std::wstring wide(text.begin(), text.end());
  std::string narrow(wide.size() + 1, '\0');
  std::size_t written = 0;
  // For a character without a narrow form the function fails and leaves the buffer empty.
  static_cast<void>(wcstombs_s(&written, narrow.data(), narrow.size(), wide.c_str(), wide.size()));
  narrow.resize(narrow.find('\0'));
  return narrow;
}

}  // namespace text
