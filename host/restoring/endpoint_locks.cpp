#include "host/restoring/endpoint_locks.h"

#include <fmt/chrono.h>
#include <fmt/core.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <thread>

#include "host/base/failure.h"
#include "host/base/system.h"
#include "host/restoring/private_folder.h"

namespace host {
namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(50);

// Fowler, Noll and Vo's hash (FNV-1a, 64 bits): an id can hold what a file's name can't. Two ids with one hash would only
// wait for each other.
std::uint64_t HashOf(const std::string& id) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : id) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  return hash;
}

std::string Holder() {
  return fmt::format("process {} since {:%H:%M:%S}", ProcessId(), fmt::localtime(std::time(nullptr)));
}

}  // namespace

std::optional<EndpointLocks> EndpointLocks::Try(const std::vector<Endpoint>& endpoints, std::string* busy) {
  const std::filesystem::path folder = SessionFolder();
  EndpointLocks locks;
  for (const Endpoint& endpoint : endpoints) {
    if (locks.Holds(endpoint.id)) continue;
    const std::filesystem::path file = folder / fmt::format("endpoint-{:016x}.lock", HashOf(endpoint.id));
    std::optional<LockedFile> held = LockedFile::HoldOrMake(file);
    if (!held.has_value()) {
      const std::string holder = ReadHeldFile(file);
      if (busy != nullptr) {
        *busy = fmt::format("'{}' is being tested by {}", endpoint.name, holder.empty() ? "another process" : holder);
      }
      return std::nullopt;
    }
    held->Write(Holder());
    locks.files_.push_back(*std::move(held));
    locks.ids_.push_back(endpoint.id);
  }
  return locks;
}

EndpointLocks EndpointLocks::Take(const std::vector<Endpoint>& endpoints, std::chrono::duration<double> wait,
                                  const std::function<void(const std::string&)>& tell,
                                  const Interruption& interruption) {
  const auto deadline = std::chrono::steady_clock::now() + wait;
  bool isTold = false;
  for (;;) {
    std::string busy;
    // All or none, so that two tests that want the same two endpoints never wait for each other.
    if (std::optional<EndpointLocks> locks = Try(endpoints, &busy)) return *std::move(locks);
    if (interruption.Requested()) {
      throw Failure(ExitCode::kInterrupted, fmt::format("Interrupted: {}.", busy), "The module wasn't called.");
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      throw Failure(ExitCode::kNoEndpoint, fmt::format("{}, and wasn't done within {:g} s.", busy, wait.count()),
                    "Wait for that test to end, or give it more time with --wait SECONDS.");
    }
    if (!isTold) tell(busy);
    isTold = true;
    std::this_thread::sleep_for(kPollInterval);
  }
}

bool EndpointLocks::Holds(const std::string& id) const { return std::ranges::find(ids_, id) != ids_.end(); }

}  // namespace host
