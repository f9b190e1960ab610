#pragma once

#include <cstdint>
#include <string>

namespace host {

// This program once more, with a command as its only argument, outside this process's group, session and console, and not
// ended with it. Its standard input and output are connected to the object. Each system has a source file of its own; CMake
// picks it.
class DetachedProcess {
 public:
  // Throws Failure when the system gives no process.
  explicit DetachedProcess(const std::string& command);
  DetachedProcess(const DetachedProcess&) = delete;
  DetachedProcess& operator=(const DetachedProcess&) = delete;
  // Closes the connection, and waits for nothing.
  ~DetachedProcess();

  // A line without its end. What can't be sent, because the process is gone, is dropped.
  void SendLine(const std::string& line);
  // The next line that the process writes; empty when none comes within five seconds.
  std::string ReceiveLine();
  // Waits for the end of the process, a second at most.
  void AwaitEnd();

 private:
  std::intptr_t channel_ = -1;                  // to its standard input; on POSIX systems from its output too
  [[maybe_unused]] std::intptr_t output_ = -1;  // from its output, on Windows
  std::intptr_t process_ = -1;
};

}  // namespace host
