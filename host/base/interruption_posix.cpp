#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

#include "host/base/interruption.h"
#include "host/base/system.h"

namespace host {
namespace {

// All that end a process from outside and can be noted. What its own fault ends, or SIGKILL, its guardian notices.
constexpr std::array kSignals = {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGUSR1, SIGUSR2,
                                 SIGALRM, SIGXCPU, SIGVTALRM, SIGPROF, SIGPOLL};

std::atomic<int> g_event = -1;
std::array<struct sigaction, kSignals.size()> g_before;

extern "C" void NoteSignal(int) {
  const int error = errno;
  const std::uint64_t one = 1;
  // The event can only be full of requests already.
  [[maybe_unused]] const ssize_t written = write(g_event, &one, sizeof one);
  errno = error;
}

}  // namespace

Interruption::Interruption() : waitable_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (waitable_ < 0) throw std::system_error(LastError(), "eventfd");
  g_event = static_cast<int>(waitable_);
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &g_before[i]);
    // As under nohup.
    if (g_before[i].sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    sigaction(kSignals[i], &action, nullptr);
  }
}

Interruption::~Interruption() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &g_before[i], nullptr);
  g_event = -1;
  close(static_cast<int>(waitable_));
}

bool Interruption::Requested() const {
  pollfd event{static_cast<int>(waitable_), POLLIN, 0};
  return poll(&event, 1, 0) == 1;
}

}  // namespace host
