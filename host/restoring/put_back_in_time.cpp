#include "host/restoring/put_back_in_time.h"

#include <fmt/core.h>

#include <chrono>
#include <future>
#include <thread>

#include "host/endpoints/platform.h"

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

// Longer than the platforms need to find out that the audio system is gone.
constexpr std::chrono::seconds kPatience{18};
constexpr std::chrono::seconds kTryAgain{2};
constexpr std::chrono::milliseconds kPause{100};

Restoration PutBackOnce(const std::string& platform, const std::vector<Endpoint>& saved) {
  try {
    const Platform connection(platform);
    return PutBack(saved);
  } catch (const Failure& failure) {
    // The sentence becomes a part of another.
    return FailedRestoration(saved, failure.message.substr(0, failure.message.find_last_not_of('.') + 1));
  }
}

Restoration PutBackUntilDone(const std::string& platform, const std::vector<Endpoint>& saved) {
  const Clock::time_point end = Clock::now() + kTryAgain;
  for (;;) {
    const Restoration restoration = PutBackOnce(platform, saved);
    if (restoration.Summary() != Restoration::State::kNo || Clock::now() >= end) return restoration;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace

Restoration PutBackInTime(const std::string& platform, const std::vector<Endpoint>& saved) {
  // On a thread of its own, as the audio system may hang, and rmthost must not.
  std::packaged_task<Restoration()> task([platform, saved] { return PutBackUntilDone(platform, saved); });
  std::future<Restoration> done = task.get_future();
  std::thread worker(std::move(task));
  if (done.wait_for(kPatience) == std::future_status::ready) {
    worker.join();
    return done.get();
  }
  worker.detach();
  return FailedRestoration(saved, fmt::format("the audio system doesn't answer within {} s", kPatience.count()));
}

}  // namespace host
