#include <fmt/format.h>

#include "host/commands.h"
#include "host/json_output.h"
#include "host/module.h"
#include "host/utf.h"

namespace host {

Answer ShowVersion(const Options& options) {
  const std::filesystem::path module = options.module ? PathFromUtf8(*options.module) : DefaultModuleFile();
  std::error_code unknown;
  const bool found = std::filesystem::is_regular_file(module, unknown);

  Answer answer;
  answer.text = fmt::format(
      "rmthost   {}\n"
      "module    {}{}\n"
      "log       {}\n"
      "platform  {}\n",
      ZQRMT_VERSION, Printable(Utf8FromPath(module)), found ? "" : "  (not found)", Utf8FromPath(LogFile()),
      Printable(options.platform));
  answer.result =
      JsonObject({{"version", JsonString(ZQRMT_VERSION)},
                  {"module", JsonObject({{"path", JsonString(Utf8FromPath(module))}, {"found", JsonBool(found)}})},
                  {"logDirectory", JsonString(ZQRMT_LOG_DIRECTORY)},
                  {"platform", JsonString(options.platform)}});
  return answer;
}

}  // namespace host
