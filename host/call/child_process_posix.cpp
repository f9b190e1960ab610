#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <string_view>
#include <utility>

#include <fmt/core.h>

#include "host/base/no_process.h"
#include "host/call/child_process.h"
#include "text/descriptor_posix.h"

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kSelf = "/proc/self/exe";

Failure NoModuleProcess(const char* operation) {
  return NoProcess("The module can't be given a process of its own", operation);
}

// Between fork and exec: only what a signal handler may do too.
[[noreturn]] void BecomeSelf(int channel, pid_t parent, char* const* arguments) {
  // A process group of its own, so that Ctrl-C doesn't reach it, and that what it starts can be ended with it.
  setpgid(0, 0);
  // A terminal may stop what writes to it from another group than its own.
  signal(SIGTTOU, SIG_IGN);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(127);
  if (dup2(channel, STDIN_FILENO) >= 0 && dup2(channel, STDOUT_FILENO) >= 0) execv(kSelf, arguments);
  _exit(127);
}

// The child, which is no more when the object isn't.
class Child {
 public:
  Child(const std::string& command, int channel) {
    std::string program = "rmthost", argument = command;
    char* const arguments[] = {program.data(), argument.data(), nullptr};
    const pid_t parent = getpid();
    id_ = fork();
    if (id_ < 0) throw NoModuleProcess("fork");
    if (id_ == 0) BecomeSelf(channel, parent, arguments);
    // Here too: whichever process comes first.
    setpgid(id_, id_);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { End(); }

  pid_t Id() const { return id_; }

  // Waits for its end, and gives its status. The signals that rmthost handles don't end a wait.
  int Wait() {
    int status = 0;
    waitpid(id_, &status, 0);
    id_ = -1;
    return status;
  }

  void End() {
    if (id_ < 0) return;
    kill(-id_, SIGKILL);
    Wait();
  }

 private:
  pid_t id_;
};

// Sends what there is room for. What a child that is gone no longer takes is dropped.
void SendSome(int channel, std::string_view& unsent) {
  const ssize_t sent = send(channel, unsent.data(), unsent.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
  if (sent < 0 && errno != EAGAIN && errno != EINTR) unsent = {};
  if (sent > 0) unsent.remove_prefix(static_cast<std::size_t>(sent));
  if (unsent.empty()) shutdown(channel, SHUT_WR);
}

// Appends what has come. False when there is nothing.
bool ReceiveSome(int channel, std::string& output) {
  char chunk[65536];
  const ssize_t received = recv(channel, chunk, sizeof chunk, MSG_DONTWAIT);
  if (received > 0) output.append(chunk, static_cast<std::size_t>(received));
  return received > 0;
}

int MillisecondsUntil(Clock::time_point deadline) {
  const double left = std::chrono::duration<double, std::milli>(deadline - Clock::now()).count();
  return static_cast<int>(std::clamp(std::ceil(left), 0.0, 1e9));
}

// Exchanges the texts until the child has ended by itself, or must be ended.
ChildEnd::How Exchange(int channel, int process, std::string_view unsent, Clock::time_point deadline,
                       const Interruption& interruption, std::string& output) {
  bool isOpen = true;
  for (;;) {
    pollfd watched[] = {{isOpen ? channel : -1, static_cast<short>(unsent.empty() ? POLLIN : POLLIN | POLLOUT), 0},
                        {process, POLLIN, 0},
                        {static_cast<int>(interruption.Waitable()), POLLIN, 0}};
    if (poll(watched, std::size(watched), MillisecondsUntil(deadline)) < 0 && errno != EINTR)
      throw NoModuleProcess("poll");
    if (interruption.Requested()) return ChildEnd::How::kInterrupted;
    if ((watched[0].revents & POLLOUT) != 0) SendSome(channel, unsent);
    if ((watched[0].revents & (POLLIN | POLLHUP | POLLERR)) != 0) isOpen = ReceiveSome(channel, output);
    if ((watched[1].revents & POLLIN) != 0) break;
    if (Clock::now() >= deadline) return ChildEnd::How::kTimedOut;
  }
  // Only what is there: a process that the child has left behind may hold the other end too.
  while (isOpen) isOpen = ReceiveSome(channel, output);
  return ChildEnd::How::kExited;
}

}  // namespace

ChildEnd RunSelf(const std::string& command, const std::string& input, std::chrono::duration<double> timeout,
                 const Interruption& interruption) {
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(timeout);
  if (access(kSelf, F_OK) != 0) {
    throw Failure(ExitCode::kBroken, fmt::format("There is no '{}', by which rmthost starts itself again.", kSelf),
                  "Mount /proc: mount -t proc proc /proc");
  }
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) throw NoModuleProcess("socketpair");
  const text::Descriptor channel(ends[0]);
  text::Descriptor childsEnd(ends[1]);
  Child child(command, childsEnd.Get());
  childsEnd.Close();
  // The C library's own function can't be linked from C++ in all its versions.
  const text::Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, child.Id(), 0)));
  if (!process) throw NoModuleProcess("pidfd_open");

  ChildEnd end;
  end.how = Exchange(channel.Get(), process.Get(), input, deadline, interruption, end.output);
  if (end.how != ChildEnd::How::kExited) {
    child.End();
    return end;
  }
  const int status = child.Wait();
  if (WIFSIGNALED(status)) {
    end.how = ChildEnd::How::kCrashed;
    const char* name = sigabbrev_np(WTERMSIG(status));
    end.crash = fmt::format("SIG{} ({})", name != nullptr ? name : "?", strsignal(WTERMSIG(status)));
  } else {
    end.exitCode = WEXITSTATUS(status);
  }
  return end;
}

std::FILE* SeparateOutput() {
  text::Descriptor own(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  const text::Descriptor nothing(open("/dev/null", O_RDWR | O_CLOEXEC));
  if (!own || !nothing) return nullptr;
  dup2(nothing.Get(), STDIN_FILENO);
  // Standard error may be closed.
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) dup2(nothing.Get(), STDOUT_FILENO);
  return fdopen(own.Release(), "wb");
}

}  // namespace host
