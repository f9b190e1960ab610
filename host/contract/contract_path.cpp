#include "host/contract/contract_path.h"

#include "text/utf.h"

namespace host {
namespace {

void AppendEscaped(std::string_view key, std::string& text) {
  for (const char c : key.substr(0, ContractPath::kLongestText)) {
    if (c == '~') {
      text += "~0";
    } else if (c == '/') {
      text += "~1";
    } else {
      text += c;
    }
  }
}

}  // namespace

std::string ContractPath::Text() const {
  std::string text;
  for (const Step& step : steps_) {
    text += '/';
    if (const std::string_view* key = std::get_if<std::string_view>(&step)) {
      AppendEscaped(*key, text);
    } else {
      text += std::to_string(std::get<std::size_t>(step));
    }
    if (text.size() >= kLongestText) break;
  }
  return text::Shortened(text, kLongestText);
}

}  // namespace host
