#include "platform/pulse/connection.h"

#include <cstdlib>
#include <new>

#include "platform/backend.h"

namespace pulse_audio {

namespace {

constexpr const char* kApplicationName = "Audio diagnostics";

// Where a server was looked for, for the person who wonders why there is none.
std::string Place(const std::string& server) {
  if (!server.empty()) return "at \"" + server + '"';
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(name) + (value == nullptr ? " isn't set" : std::string(" is \"") + value + '"');
  };
  return "where libpulse looks (" + variable("PULSE_SERVER") + ", " + variable("XDG_RUNTIME_DIR") + ')';
}

}  // namespace

Connection::Connection(const std::string& server) : loop_(pa_threaded_mainloop_new()) {
  if (loop_ == nullptr) throw std::bad_alloc();
  context_ = pa_context_new(pa_threaded_mainloop_get_api(loop_), kApplicationName);
  try {
    if (context_ == nullptr) throw std::bad_alloc();
    pa_threaded_mainloop_set_name(loop_, "audioplatform");
    Connect(server);
  } catch (...) {
    End();
    throw;
  }
}

Connection::~Connection() { End(); }

void Connection::End() {
  if (context_ != nullptr) {
    const Lock lock(*this);
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
  }
  // The thread needs the lock to end.
  pa_threaded_mainloop_stop(loop_);
  pa_threaded_mainloop_free(loop_);
}

void Connection::Connect(const std::string& server) {
  if (pa_threaded_mainloop_start(loop_) < 0) throw std::bad_alloc();
  const Lock lock(*this);
  BeginOperation();
  pa_context_set_state_callback(
      context_, [](pa_context*, void* self) { static_cast<Connection*>(self)->WakeUp(); }, this);
  const bool isUnderWay =
      pa_context_connect(context_, server.empty() ? nullptr : server.c_str(), PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0;
  const auto isReady = [this] { return pa_context_get_state(context_) == PA_CONTEXT_READY; };
  if (isUnderWay && WaitUntil(kAnswerTime, isReady)) return;

  const int error = pa_context_errno(context_);
  const std::string reason = isUnderWay && IsAlive() ? "no answer within 2 seconds" : pa_strerror(error);
  throw platform::PlatformError("There is no sound server " + Place(server) + ": " + reason + '.',
                                error == PA_ERR_INVALIDSERVER ? E_INVALIDARG : AUDCLNT_E_SERVICE_NOT_RUNNING);
}

HRESULT Connection::Finish(pa_operation* request, const int& error) {
  if (request == nullptr) return StatusOf(pa_context_errno(context_));
  pa_operation_set_state_callback(
      request, [](pa_operation*, void* self) { static_cast<Connection*>(self)->WakeUp(); }, this);
  const auto isOver = [request] { return pa_operation_get_state(request) != PA_OPERATION_RUNNING; };
  if (!WaitUntil(kAnswerTime, isOver)) {
    // Its callback would write into a variable that is gone by then.
    pa_operation_cancel(request);
    GiveUp();
  }
  const bool isAnswered = pa_operation_get_state(request) == PA_OPERATION_DONE;
  pa_operation_unref(request);
  // A request is also cancelled with the stream that it is on.
  return StatusOf(isAnswered ? error : PA_ERR_KILLED);
}

HRESULT Connection::StatusOf(int error) const {
  if (error == PA_OK) return S_OK;
  if (!IsAlive()) return AUDCLNT_E_SERVICE_NOT_RUNNING;
  return error == PA_ERR_NOENTITY || error == PA_ERR_KILLED ? AUDCLNT_E_DEVICE_INVALIDATED : E_FAIL;
}

Connection::TimeLimit::TimeLimit(const Connection& connection, pa_usec_t end) : connection_(connection) {
  event_ = pa_context_rttime_new(
      connection.context_, end,
      [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
        auto* limit = static_cast<TimeLimit*>(self);
        limit->hasPassed_ = true;
        limit->connection_.WakeUp();
      },
      this);
}

Connection::TimeLimit::~TimeLimit() {
  if (event_ != nullptr) pa_threaded_mainloop_get_api(connection_.loop_)->time_free(event_);
}

void NoteSuccess(pa_context* context, int success, void* error) noexcept {
  *static_cast<int*>(error) = success != 0 ? PA_OK : pa_context_errno(context);
}

}  // namespace pulse_audio
