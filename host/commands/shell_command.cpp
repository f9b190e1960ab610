#include "host/commands/commands.h"
#include "host/report/json_output.h"
#include "host/shell/completion.h"

namespace host {

Answer ShowCompletion(const Options& options) {
  Answer answer;
  answer.text = CompletionScript(options.shell);
  answer.result = JsonObject({{"text", JsonString(answer.text)}});
  return answer;
}

}  // namespace host
