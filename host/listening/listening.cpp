#include "host/listening/listening.h"

#include <exception>
#include <utility>

#include "host/endpoints/platform.h"

namespace host {
namespace {

CapturedSound ListenUntil(const std::future<void>& end, const std::string& platform, const std::string& captureId,
                          Kept kept, std::promise<void> begun) {
  // `begun` is let go, and so tells, also when an exception ends this.
  const Platform connection(platform);
  Listener listener(captureId);
  begun.set_value();
  end.wait();
  return listener.Finish(kept);
}

}  // namespace

Listening::Listening(const std::string& platform, const std::string& captureId, Kept kept) : kept_(kept) {
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
  there_ = std::async(std::launch::async, ListenUntil, end_.get_future(), platform, captureId, kept, std::move(begun));
  hasBegun.wait();
}

std::variant<CapturedSound, std::string> Listening::Finish() {
  if (!trouble_.empty()) return trouble_;
  try {
    if (here_.has_value()) return here_->Finish(kept_);
    end_.set_value();
    return there_.get();
  } catch (const std::exception& error) {
    return std::string(error.what());
  }
}

}  // namespace host
