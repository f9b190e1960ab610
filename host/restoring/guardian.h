#pragma once

#include <filesystem>

#include "host/restoring/detached_process.h"

namespace host {

// The command of rmthost that is a guardian.
inline constexpr const char* kGuardianProcess = "guardian-process";

// A process that puts back what a record says should this one be gone before it could, whatever took it: it is in a process
// group and a session of its own, and ignores requests to end.
class Guardian {
 public:
  // Returns when the guardian is on its guard. Throws Failure.
  explicit Guardian(const std::filesystem::path& record);

  // All is put back, and the record taken away. Without this the guardian puts back when the object ends.
  void Dismiss();

 private:
  DetachedProcess process_;
};

// The guardian's side. Returns the exit code of the process.
int ServeAsGuardian();

}  // namespace host
