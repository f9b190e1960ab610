// The comparison of names that people type, whatever the case of their letters.
#pragma once

#include <string>
#include <string_view>

namespace text {

// `text` with each letter as its small form, in every locale and beyond ASCII too: names that differ in case only give the
// same text. It is for comparing, not for showing. Both are UTF-8; bytes that aren't become U+FFFD. Where the system has
// no table of letters, only A to Z are changed.
std::string FoldCase(std::string_view text);

}  // namespace text
