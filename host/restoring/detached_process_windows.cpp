#include <windows.h>

#include <optional>

#include "host/base/no_process.h"
#include "host/base/start_self_windows.h"
#include "host/restoring/detached_process.h"

namespace host {
namespace {

constexpr DWORD kReceiveMilliseconds = 5000;
constexpr DWORD kEndMilliseconds = 1000;

Failure NoGuardian(const char* operation) {
  return NoProcess("The settings can't be given a process that guards them", operation);
}

HANDLE ProcessOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }
std::intptr_t NumberOf(HANDLE handle) { return reinterpret_cast<std::intptr_t>(handle); }

// A pipe of which the process to come gets one end.
struct Pipe {
  HANDLE reading = nullptr, writing = nullptr;

  Pipe() {
    if (!CreatePipe(&reading, &writing, nullptr, 0)) throw NoGuardian("CreatePipe");
  }
};

HANDLE Start(const std::string& command, HANDLE input, HANDLE output) {
  // Out of a job that is ended as a whole, where that job allows it.
  for (const DWORD breakaway : {DWORD{CREATE_BREAKAWAY_FROM_JOB}, DWORD{0}}) {
    const std::optional<PROCESS_INFORMATION> made =
        StartSelf(command, {.input = input, .output = output, .errors = nullptr},
                  DETACHED_PROCESS | CREATE_NEW_PROCESS_GROUP | breakaway);
    if (!made.has_value()) continue;
    CloseHandle(made->hThread);
    return made->hProcess;
  }
  throw NoGuardian("CreateProcess");
}

}  // namespace

DetachedProcess::DetachedProcess(const std::string& command) {
  const Pipe input, output;
  process_ = NumberOf(Start(command, input.reading, output.writing));
  CloseHandle(input.reading);
  CloseHandle(output.writing);
  channel_ = NumberOf(input.writing);
  output_ = NumberOf(output.reading);
}

DetachedProcess::~DetachedProcess() {
  for (const std::intptr_t handle : {channel_, output_, process_}) {
    if (handle != -1) CloseHandle(ProcessOf(handle));
  }
}

void DetachedProcess::SendLine(const std::string& line) {
  const std::string whole = line + "\n";
  DWORD written = 0;
  WriteFile(ProcessOf(channel_), whole.data(), static_cast<DWORD>(whole.size()), &written, nullptr);
}

std::string DetachedProcess::ReceiveLine() {
  std::string line;
  for (const ULONGLONG end = GetTickCount64() + kReceiveMilliseconds; GetTickCount64() < end;) {
    DWORD available = 0, got = 0;
    char byte = 0;
    if (!PeekNamedPipe(ProcessOf(output_), nullptr, 0, nullptr, &available, nullptr)) return "";
    if (available == 0) {
      Sleep(1);
    } else if (!ReadFile(ProcessOf(output_), &byte, 1, &got, nullptr) || got != 1) {
      return "";
    } else if (byte == '\n') {
      // The other end's stream may write lines as Windows has them.
      if (line.ends_with('\r')) line.pop_back();
      return line;
    } else {
      line += byte;
    }
  }
  return "";
}

void DetachedProcess::AwaitEnd() { WaitForSingleObject(ProcessOf(process_), kEndMilliseconds); }

}  // namespace host
