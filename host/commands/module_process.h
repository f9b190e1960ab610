#pragma once

namespace host {

// The child's side of module_messages.h: carries out the request on standard input and reports. Returns the exit code
// of the process, 0 when there is a report.
int ServeModuleRequest();

}  // namespace host
