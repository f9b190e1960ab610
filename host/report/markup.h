#pragma once

#include <string>
#include <string_view>

namespace host {

// Any text as content or attribute of XML 1.0 and of HTML that reads as the text itself, made printable. The two characters
// that XML can't hold become U+FFFD.
std::string Escaped(std::string_view text);

}  // namespace host
