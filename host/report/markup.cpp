#include "host/report/markup.h"

#include "text/utf.h"

namespace host {

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text::Printable(text)) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      case '\'': escaped += "&#39;"; break;
      default: escaped += c;
    }
  }
  // Two characters of the basic plane are none in XML.
  for (const char* forbidden : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    for (std::size_t at = 0; (at = escaped.find(forbidden, at)) != std::string::npos;) {
      escaped.replace(at, 3, "\xEF\xBF\xBD");
    }
  }
  return escaped;
}

}  // namespace host
