#include <fmt/format.h>

#include "host/base/system.h"
#include "host/call/module.h"
#include "host/commands/commands.h"
#include "host/report/json_output.h"
#include "text/utf.h"

namespace host {

Answer ShowVersion(const Options& options) {
  const std::filesystem::path module = options.module ? text::PathFromUtf8(*options.module) : DefaultModuleFile();
  std::error_code unknown;
  const bool found = std::filesystem::is_regular_file(module, unknown);

  Answer answer;
  answer.text = fmt::format(
      "rmthost   {}\n"
      "module    {}{}\n"
      "log       {}\n"
      "platform  {}\n",
      ZQRMT_VERSION, text::Printable(text::Utf8FromPath(module)), found ? "" : "  (not found)",
      text::Utf8FromPath(LogFile()), text::Printable(options.platform));
  answer.result = JsonObject(
      {{"version", JsonString(ZQRMT_VERSION)},
       {"module", JsonObject({{"path", JsonString(text::Utf8FromPath(module))}, {"found", JsonBool(found)}})},
       {"logDirectory", JsonString(text::Utf8FromPath(LogDirectory()))},
       {"platform", JsonString(options.platform)}});
  return answer;
}

}  // namespace host
