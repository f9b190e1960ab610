#include <fmt/core.h>

#include "host/base/json.h"
#include "host/base/log_directory.h"
#include "host/call/module.h"
#include "host/commands/commands.h"
#include "text/utf.h"

namespace host {

CommandResult ShowVersion(const Options& options) {
  const std::filesystem::path module = options.module ? text::PathFromUtf8(*options.module) : DefaultModuleFile();
  std::error_code unknown;
  const bool found = std::filesystem::is_regular_file(module, unknown);

  CommandResult result;
  result.text = fmt::format(
      "rmthost   {}\n"
      "module    {}{}\n"
      "log       {}\n"
      "platform  {}\n",
      ZQRMT_VERSION, text::Printable(text::Utf8FromPath(module)), found ? "" : "  (not found)",
      text::Printable(text::Utf8FromPath(LogFile())), text::Printable(options.platform));
  result.json = TextOf({{"version", ZQRMT_VERSION},
                        {"module", {{"path", text::Utf8FromPath(module)}, {"found", found}}},
                        {"logDirectory", text::Utf8FromPath(ChosenLog().directory)},
                        {"platform", options.platform}});
  return result;
}

}  // namespace host
