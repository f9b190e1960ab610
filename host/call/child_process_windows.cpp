#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <thread>

#include <fmt/core.h>

#include "host/base/no_process.h"
#include "host/base/start_self_windows.h"
#include "host/call/child_process.h"

namespace host {
namespace {

struct CloseIt {
  void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseIt>;

Failure NoModuleProcess(const char* operation) {
  return NoProcess("The module can't be given a process of its own", operation);
}

struct Pipe {
  Handle reading, writing;
};

Pipe NewPipe() {
  HANDLE reading = nullptr, writing = nullptr;
  if (!CreatePipe(&reading, &writing, nullptr, 0)) throw NoModuleProcess("CreatePipe");
  return {Handle(reading), Handle(writing)};
}

// A job that ends its processes when its last handle goes, and that is when this process ends.
Handle NewJob() {
  Handle job(CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  if (job == nullptr ||
      !SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
    throw NoModuleProcess("CreateJobObject");
  }
  return job;
}

// Starts the child with these standard streams.
Handle StartChild(const std::string& command, HANDLE input, HANDLE output, HANDLE job) {
  HANDLE errors = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetStdHandle(STD_ERROR_HANDLE), GetCurrentProcess(), &errors, 0, TRUE,
                  DUPLICATE_SAME_ACCESS);
  const Handle ownErrors(errors);
  // In a group of its own Ctrl-C doesn't reach it. It is suspended until it can't escape the job.
  const std::optional<PROCESS_INFORMATION> made = StartSelf(
      command, {.input = input, .output = output, .errors = errors}, CREATE_SUSPENDED | CREATE_NEW_PROCESS_GROUP);
  if (!made.has_value()) throw NoModuleProcess("CreateProcess");
  Handle process(made->hProcess);
  const Handle thread(made->hThread);
  if (!AssignProcessToJobObject(job, process.get()) || ResumeThread(thread.get()) == static_cast<DWORD>(-1)) {
    const Failure failure = NoModuleProcess("AssignProcessToJobObject");
    TerminateProcess(process.get(), 1);
    throw failure;
  }
  return process;
}

// Writes `text` as far as the child takes it, and closes the pipe.
void WriteAll(Handle pipe, const std::string& text) {
  DWORD written = 0;
  for (std::size_t at = 0; at < text.size(); at += written) {
    const std::size_t piece = std::min<std::size_t>(text.size() - at, 65536);
    if (!WriteFile(pipe.get(), text.data() + at, static_cast<DWORD>(piece), &written, nullptr)) return;
  }
}

// Reads until no process holds the other end.
void ReadAll(const Handle& pipe, std::string& text) {
  char chunk[65536];
  DWORD received = 0;
  while (ReadFile(pipe.get(), chunk, sizeof chunk, &received, nullptr) && received > 0) text.append(chunk, received);
}

ChildEnd::How Await(HANDLE process, std::chrono::duration<double> timeout, const Interruption& interruption) {
  const HANDLE awaited[] = {reinterpret_cast<HANDLE>(interruption.Waitable()), process};
  const double milliseconds = std::clamp(timeout.count() * 1000, 0.0, 4e9);
  switch (WaitForMultipleObjects(2, awaited, FALSE, static_cast<DWORD>(milliseconds))) {
    case WAIT_OBJECT_0: return ChildEnd::How::kInterrupted;
    case WAIT_OBJECT_0 + 1: return ChildEnd::How::kExited;
    default: return ChildEnd::How::kTimedOut;
  }
}

LONG WINAPI EndWithItsCode(EXCEPTION_POINTERS* exception) {
  TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

std::string ExceptionText(DWORD code) {
  const char* meaning = code == EXCEPTION_ACCESS_VIOLATION      ? " (access violation)"
                        : code == EXCEPTION_STACK_OVERFLOW      ? " (stack overflow)"
                        : code == EXCEPTION_INT_DIVIDE_BY_ZERO  ? " (division by zero)"
                        : code == EXCEPTION_ILLEGAL_INSTRUCTION ? " (illegal instruction)"
                                                                : "";
  return fmt::format("exception 0x{:08X}{}", code, meaning);
}

}  // namespace

ChildEnd RunSelf(const std::string& command, const std::string& input, std::chrono::duration<double> timeout,
                 const Interruption& interruption) {
  Pipe request = NewPipe(), report = NewPipe();
  const Handle job = NewJob();
  const Handle process = StartChild(command, request.reading.get(), report.writing.get(), job.get());
  request.reading.reset();
  report.writing.reset();

  ChildEnd end;
  {
    const std::jthread writer([&] { WriteAll(std::move(request.writing), input); });
    const std::jthread reader([&] { ReadAll(report.reading, end.output); });
    end.how = Await(process.get(), timeout, interruption);
    // Also what the child may have left behind: the threads wait for the last holder of a pipe.
    TerminateJobObject(job.get(), 1);
  }
  if (end.how != ChildEnd::How::kExited) return end;
  DWORD code = 0;
  GetExitCodeProcess(process.get(), &code);
  // The codes of exceptions are statuses of the severity "error".
  constexpr DWORD kErrors = 0xC0000000;
  if (code >= kErrors) {
    end.how = ChildEnd::How::kCrashed;
    end.crash = ExceptionText(code);
  }
  end.exitCode = static_cast<int>(code);
  return end;
}

std::FILE* SeparateOutput() {
  // A crash is told by rmthost, and not by a window that waits for somebody to close it, or a debugger.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  SetUnhandledExceptionFilter(EndWithItsCode);
  const int own = _dup(_fileno(stdout));
  if (own < 0) return nullptr;
  // What the child starts has no part in it.
  SetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(own)), HANDLE_FLAG_INHERIT, 0);
  if (_dup2(_fileno(stderr), _fileno(stdout)) != 0) {
    const int nothing = _open("NUL", _O_WRONLY);
    if (nothing < 0 || _dup2(nothing, _fileno(stdout)) != 0) return nullptr;
    _close(nothing);
  }
  SetStdHandle(STD_OUTPUT_HANDLE, reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stdout))));
  _setmode(own, _O_BINARY);
  return _fdopen(own, "wb");
}

}  // namespace host
