#include "host/base/command_result.h"

#include <utility>

#include "host/base/json.h"

namespace host {

CommandResult TextResult(std::string text) {
  CommandResult result;
  result.json = TextOf({{"text", text}});
  result.text = std::move(text);
  return result;
}

}  // namespace host
