#include "host/commands/module_process.h"

#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "host/call/child_process.h"
#include "host/call/module_call.h"
#include "host/commands/commands.h"

namespace host {
namespace {

struct CloseStream {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

}  // namespace

int ServeModuleRequest() {
  const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  const std::unique_ptr<std::FILE, CloseStream> output(SeparateOutput());
  if (output == nullptr) return 1;
  const ModuleRequest request = ReadModuleRequest(text);
  const std::string report =
      request.call.has_value() ? MessageText(CallHere(*request.call)) : MessageText(CheckHere(*request.check));
  const bool isWhole = std::fwrite(report.data(), 1, report.size(), output.get()) == report.size();
  return isWhole && std::fflush(output.get()) == 0 ? 0 : 1;
}

}  // namespace host
