#include "host/base/no_process.h"

#include <fmt/core.h>

#include "host/base/system.h"

namespace host {

Failure NoProcess(std::string_view what_fails, std::string_view operation) {
  const std::error_code reason = LastError();
  return {ExitCode::kBroken, fmt::format("{}: {}: {}.", what_fails, operation, reason.message()),
          "Close other programs and try again."};
}

}  // namespace host
