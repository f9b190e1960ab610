#pragma once

namespace host {

// How rmthost ends. The numbers are part of its interface: scripts depend on them, so a new meaning gets a new number.
enum class ExitCode : int {
  kPass = 0,
  kFail = 1,
  kBadInput = 2,
  kNoEndpoint = 3,
  kBroken = 4,
};

// What each means, for the help.
inline constexpr const char* kExitCodesHelp =
    "Exit codes:\n"
    "  0  the test passed, or the command did what it was asked\n"
    "  1  the test did not pass, or the check found more than added defaults\n"
    "  2  usage error or bad input\n"
    "  3  endpoint not found, not active, or not named unambiguously\n"
    "  4  platform or module error\n";

}  // namespace host
