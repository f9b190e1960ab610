#pragma once

#include <string>
#include <string_view>

namespace host {

// Any text as content or attribute of XML 1.0 and of HTML that reads as the text itself. What those can't hold, control
// characters among it, comes out as a question mark or as U+FFFD.
std::string Escaped(std::string_view text);

}  // namespace host
