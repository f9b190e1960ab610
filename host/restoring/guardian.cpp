#include "host/restoring/guardian.h"

#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <thread>

#include "host/restoring/left_runs.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr const char* kReady = "ready";
constexpr const char* kDone = "done";

// What the module's process had sent when it died with rmthost, a sound server may carry out a little later.
constexpr std::chrono::milliseconds kSettling{200};
constexpr std::chrono::milliseconds kPause{200};
constexpr std::chrono::seconds kPatience{60};

bool IsSettled(const std::filesystem::path& record) {
  const std::optional<LeftRun> run = LookAtLeftRun(LeftRuns::kPutBack, record);
  return !run.has_value() || run->IsDone();
}

}  // namespace

Guardian::Guardian(const std::filesystem::path& record) : process_(kGuardianProcess) {
  process_.SendLine(text::Utf8FromPath(record));
  if (process_.ReceiveLine() == kReady) return;
  throw Failure(ExitCode::kBroken, "The process that guards the settings doesn't start.",
                "Close other programs and try again.");
}

void Guardian::Dismiss() {
  process_.SendLine(kDone);
  process_.AwaitEnd();
}

int ServeAsGuardian() {
  std::string record, word;
  if (!std::getline(std::cin, record)) return 1;
  std::cout << kReady << std::endl;
  // Ends without a word when the other process does.
  std::getline(std::cin, word);
  if (word == kDone) return 0;
  std::this_thread::sleep_for(kSettling);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!IsSettled(text::PathFromUtf8(record))) {
    // What is left is put back when rmthost runs next.
    if (std::chrono::steady_clock::now() >= end) return 1;
    std::this_thread::sleep_for(kPause);
  }
  return 0;
}

}  // namespace host
