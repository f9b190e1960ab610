#include <windows.h>

#include "text/fold_case.h"
#include "text/utf.h"

namespace text {
namespace {

// The mapping of single letters keeps the length. By the rules of language, as those of file names leave the sigma at the
// end of a word as it is.
std::wstring Mapped(const std::wstring& text, DWORD mapping) {
  std::wstring mapped(text.size(), L'\0');
  const int size = static_cast<int>(text.size());
  const int written = LCMapStringEx(LOCALE_NAME_INVARIANT, mapping | LCMAP_LINGUISTIC_CASING, text.data(), size,
                                    mapped.data(), size, nullptr, nullptr, 0);
  return written == size ? mapped : text;
}

}  // namespace

std::string FoldCase(std::string_view text) {
  const std::u16string units = ToUtf16(ValidUtf8(text));
  // By way of the capitals: letters with two small forms, such as the sigma at the end of a word, come to one of them.
  const std::wstring capitals = Mapped(std::wstring(units.begin(), units.end()), LCMAP_UPPERCASE);
  const std::wstring folded = Mapped(capitals, LCMAP_LOWERCASE);
  return LowerAscii(ToUtf8(std::u16string(folded.begin(), folded.end())));
}

}  // namespace text
