#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/base/json.h"
#include "host/call/child_process.h"
#include "host/call/module_call.h"
#include "host/commands/commands.h"

namespace host {
namespace {

struct CloseStream {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

}  // namespace

void ServeModuleRequest() {
  const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  const std::unique_ptr<std::FILE, CloseStream> output(SeparateOutput());
  if (output == nullptr) throw std::runtime_error("it has no output");
  const std::optional<ModuleRequest> request = ReadJson<ModuleRequest>(text);
  if (!request.has_value() || request->call.has_value() == request->check.has_value()) {
    throw std::runtime_error("it got no request");
  }
  const std::string report =
      request->call.has_value() ? TextOf(CallHere(*request->call)) : TextOf(CheckHere(*request->check));
  const bool isWhole = std::fwrite(report.data(), 1, report.size(), output.get()) == report.size();
  if (!isWhole || std::fflush(output.get()) != 0) throw std::runtime_error("nobody takes its report");
}

}  // namespace host
