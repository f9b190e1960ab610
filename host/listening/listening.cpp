#include "host/listening/listening.h"

#include <exception>
#include <utility>

#include "host/endpoints/platform.h"

namespace host {
namespace {

Recording ListenUntil(const std::future<void>& end, const std::string& platform, const std::string& captureId,
                      std::promise<void> begun) {
  // `begun` is let go, and so tells, also when an exception ends this.
  const Platform connection(platform);
  Listener listener(captureId);
  begun.set_value();
  end.wait();
  return listener.Finish();
}

}  // namespace

Listening::Listening(const std::string& platform, const std::string& captureId) {
  if (EndsWithProcess(platform)) {
    try {
      here_.emplace(captureId);
    } catch (const std::exception& error) {
      trouble_ = error.what();
    }
    return;
  }
  std::promise<void> begun;
  const std::future<void> hasBegun = begun.get_future();
  there_ = std::async(std::launch::async, ListenUntil, end_.get_future(), platform, captureId, std::move(begun));
  hasBegun.wait();
}

std::variant<Recording, std::string> Listening::Finish() {
  if (!trouble_.empty()) return trouble_;
  try {
    if (here_.has_value()) return here_->Finish();
    end_.set_value();
    return there_.get();
  } catch (const std::exception& error) {
    return std::string(error.what());
  }
}

}  // namespace host
