#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "host/base/no_process.h"
#include "host/restoring/detached_process.h"
#include "text/descriptor_posix.h"

namespace host {
namespace {

constexpr int kReceiveMilliseconds = 5000;
constexpr int kEndMilliseconds = 1000;

Failure NoGuardian(const char* operation) {
  return NoProcess("The settings can't be given a process that guards them", operation);
}

// Between fork and exec: only what a signal handler may do too.
[[noreturn]] void BecomeSelf(int channel, char* const* arguments) {
  setsid();
  // Whatever ends the other process must not end this one. What is ignored stays so in the new program.
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1, SIGUSR2, SIGPIPE, SIGALRM, SIGXCPU, SIGTSTP}) {
    signal(number, SIG_IGN);
  }
  // It keeps neither a folder nor a pipe of a shell's busy.
  const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  const bool isReady = chdir("/") == 0 && dup2(nothing, STDERR_FILENO) >= 0 && dup2(channel, STDIN_FILENO) >= 0 &&
                       dup2(channel, STDOUT_FILENO) >= 0;
  if (isReady) execv("/proc/self/exe", arguments);
  _exit(127);
}

}  // namespace

DetachedProcess::DetachedProcess(const std::string& command) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) throw NoGuardian("socketpair");
  text::Descriptor own(ends[0]);
  const text::Descriptor other(ends[1]);
  std::string program = "rmthost", argument = command;
  char* const arguments[] = {program.data(), argument.data(), nullptr};
  const pid_t id = fork();
  if (id == 0) BecomeSelf(other.Get(), arguments);
  if (id < 0) throw NoGuardian("fork");
  channel_ = own.Release();
  process_ = id;
}

DetachedProcess::~DetachedProcess() {
  if (channel_ >= 0) close(static_cast<int>(channel_));
}

void DetachedProcess::SendLine(const std::string& line) {
  const std::string whole = line + "\n";
  // A line is far shorter than what the socket takes at once.
  [[maybe_unused]] const ssize_t sent = send(static_cast<int>(channel_), whole.data(), whole.size(), MSG_NOSIGNAL);
}

std::string DetachedProcess::ReceiveLine() {
  std::string line;
  char byte = 0;
  pollfd watched{static_cast<int>(channel_), POLLIN, 0};
  for (;;) {
    const int ready = poll(&watched, 1, kReceiveMilliseconds);
    if (ready < 0 && errno == EINTR) continue;
    if (ready != 1 || recv(watched.fd, &byte, 1, 0) != 1) return "";
    if (byte == '\n') return line;
    line += byte;
  }
}

void DetachedProcess::AwaitEnd() {
  // It may have been stopped, and this process must not wait for that.
  for (int waited = 0; waited < kEndMilliseconds; ++waited) {
    if (waitpid(static_cast<pid_t>(process_), nullptr, WNOHANG) != 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

}  // namespace host
