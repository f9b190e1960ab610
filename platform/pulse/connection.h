#pragma once

#include <pulse/pulseaudio.h>
#include <algorithm>
#include <mutex>
#include <string>

#include "platform/core_audio.h"

namespace pulse_audio {

// One connection to a sound server, with the thread on which libpulse carries it.
//
// Nothing is waited for without a limit. A server that doesn't answer within kAnswerTime, or whose answers to all requests of
// one operation take longer than kOperationTime, is given up: from then on every request fails at once, so that an operation,
// and all that its caller does after it, end soon.
class Connection {
 public:
  static constexpr pa_usec_t kAnswerTime = 2 * PA_USEC_PER_SEC;
  // More than the longest operation takes with a server that answers at once: 2.4 seconds, for opening a playback.
  static constexpr pa_usec_t kOperationTime = 5 * PA_USEC_PER_SEC;

  // Connects to the server that libpulse would call by this text, or, when it is empty, where libpulse looks by itself.
  // Starts no server. Throws platform::PlatformError when none answers, and std::bad_alloc.
  explicit Connection(const std::string& server);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  // Holds libpulse's thread off, as std::lock_guard has it; whatever follows needs it. It may be held twice, but not while
  // something is waited for.
  void lock() const { pa_threaded_mainloop_lock(loop_); }
  void unlock() const { pa_threaded_mainloop_unlock(loop_); }
  using Lock = std::lock_guard<const Connection>;

  // The waits from now on are those of one operation, up to the next call of this.
  void BeginOperation() { operationEnd_ = pa_rtclock_now() + kOperationTime; }

  pa_context* Context() const { return context_; }
  bool IsAlive() const { return PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)); }

  // Waits until the condition holds; false when `time` (in microseconds) or the operation's time has passed, or the
  // connection ended, before.
  // The condition is tried again whenever a state changes or WakeUp is called.
  template <class Condition>
  bool WaitUntil(pa_usec_t time, Condition condition) {
    const TimeLimit limit(*this, std::min(pa_rtclock_now() + time, operationEnd_));
    while (!condition()) {
      if (limit.HasPassed() || !IsAlive()) return false;
      pa_threaded_mainloop_wait(loop_);
    }
    return true;
  }
  // For callbacks on libpulse's thread.
  void WakeUp() const { pa_threaded_mainloop_signal(loop_, 0); }

  // Waits for the answer to a request, whose callback has put PA_OK or the server's error into `error` by then. A null
  // request is one that couldn't be made. Gives the status of that, as StatusOf.
  HRESULT Finish(pa_operation* request, const int& error);

  // The status for an error of libpulse: AUDCLNT_E_SERVICE_NOT_RUNNING for any error once the connection has ended,
  // AUDCLNT_E_DEVICE_INVALIDATED when what was asked for isn't there any more.
  HRESULT StatusOf(int error) const;

  // Ends the connection with a server that has not answered in time.
  void GiveUp() { pa_context_disconnect(context_); }

 private:
  class TimeLimit {
   public:
    // `end` is on the clock of pa_rtclock_now.
    TimeLimit(const Connection& connection, pa_usec_t end);
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;
    ~TimeLimit();
    bool HasPassed() const { return hasPassed_ || event_ == nullptr; }

   private:
    const Connection& connection_;
    bool hasPassed_ = false;
    pa_time_event* event_;  // null when there is no memory for it: then no time is given at all
  };

  void Connect(const std::string& server);
  void End();

  pa_threaded_mainloop* loop_ = nullptr;
  pa_context* context_ = nullptr;
  pa_usec_t operationEnd_ = 0;
};

// The callback of requests that are only answered by success or failure; `error` is the int of Finish.
void NoteSuccess(pa_context* context, int success, void* error) noexcept;

}  // namespace pulse_audio
