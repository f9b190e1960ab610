#pragma once

#include <string_view>

#include "host/base/failure.h"

namespace host {

// That the system gives no process, as `operation` was refused; the reason is the system's last error. `what_fails` is a
// sentence without its end.
Failure NoProcess(std::string_view what_fails, std::string_view operation);

}  // namespace host
