#pragma once

namespace host {

// How rmthost ends. The numbers are part of its interface: scripts depend on them, so a new meaning gets a new number.
enum class ExitCode : int {
  kPass = 0,
  kFail = 1,
  kBadInput = 2,
  kNoEndpoint = 3,
  kBroken = 4,
  kTimedOut = 5,
  kNotRestored = 6,
  kInterrupted = 130,  // what a shell makes of Ctrl-C
};

// What each means, for the help.
inline constexpr const char* kExitCodesHelp =
    "Exit codes:\n"
    "  0    the test passed, or the command did what it was asked\n"
    "  1    the test did not pass, or the check found more than added defaults\n"
    "  2    usage error or bad input\n"
    "  3    endpoint not found, not active, not named unambiguously, or held by another test\n"
    "  4    platform or module error; the module crashed\n"
    "  5    the module took longer than --timeout allows\n"
    "  6    the settings of an endpoint could not be put back\n"
    "  130  interrupted\n";

}  // namespace host
