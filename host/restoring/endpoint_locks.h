#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/base/interruption.h"
#include "host/endpoints/endpoints.h"
#include "host/restoring/locked_file.h"

namespace host {

// Holds endpoints against every other process of this user, for the object's life: one test at a time changes the settings
// of an endpoint. An endpoint is known by its id alone, so that endpoints of one name on two audio systems are held together.
class EndpointLocks {
 public:
  // Holds no endpoint.
  EndpointLocks() = default;

  // Holds the endpoints, all or none. `busy` says, when given, which endpoint another process holds, and which process, as
  // "'Speaker' is being tested by process 4711 since 09:12:03". Throws Failure when nothing can be held at all.
  static std::optional<EndpointLocks> Try(const std::vector<Endpoint>& endpoints, std::string* busy = nullptr);

  // The same, but waits up to `wait` for the other process. `tell` gets the above once, when waiting begins. Throws Failure
  // when it didn't end in time, or there was a request to end.
  static EndpointLocks Take(const std::vector<Endpoint>& endpoints, std::chrono::duration<double> wait,
                            const std::function<void(const std::string&)>& tell, const Interruption& interruption);

  bool Holds(const std::string& id) const;

 private:
  std::vector<std::string> ids_;
  std::vector<LockedFile> files_;
};

}  // namespace host
