#include <locale.h>
#include <utf8/cpp17.h>
#include <wctype.h>

#include "text/fold_case.h"
#include "text/utf.h"

namespace text {
namespace {

// A locale of its own, as the process may be in the locale "C", which knows no letters beyond ASCII. It lasts as long as
// the process. Null where the C library doesn't have it.
locale_t Letters() {
  static const locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
  return letters;
}

}  // namespace

std::string FoldCase(std::string_view text) {
  const locale_t letters = Letters();
  if (letters == locale_t{}) return LowerAscii(ValidUtf8(text));
  std::u32string characters = utf8::utf8to32(ValidUtf8(text));
  for (char32_t& character : characters) {
    // By way of the capital: letters with two small forms, such as the sigma at the end of a word, come to one of them.
    const wint_t capital = towupper_l(static_cast<wint_t>(character), letters);
    character = static_cast<char32_t>(towlower_l(capital, letters));
  }
  return utf8::utf32to8(characters);
}

}  // namespace text
