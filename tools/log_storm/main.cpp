// Lets several processes log at once through rotation, and counts what has become of their lines:
//
//   log_storm [--writers N] [--bare N] [--lines N] [--bytes N]
//
// Ends with exit code 1 when a line is torn or a logger raised something; and, without bare writers, when a line is lost.
// docs/reliability.md has what it measured.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "logging/log_directory.h"
#include "logging/logger.h"
#include "tests/support/temp_directory.h"
#include "tools/log_storm/bare_writer.h"

namespace {

struct Plan {
  int writers = 8;  // processes
  int bare = 0;     // of them by the framework's bare rule: the first ones
  int lines = 100000;
  std::size_t bytes = 60;  // of a line's text
};

// Shared by all processes.
struct Raised {
  std::atomic<int> byLoggers, byBareWriters;
};

std::string TextOf(const Plan& plan, int writer, int line) {
  std::string text = std::to_string(writer) + " " + std::to_string(line) + " ";
  text.resize(std::max(text.size(), plan.bytes), 'x');
  return text;
}

constexpr char kSource[] = "storm";
const std::string kLineEnd = ", [" + std::string(kSource) + "]";

void WriteAll(const Plan& plan, int writer, Raised& raised) {
  logging::Logger logger(kSource, 44000000);
  logger.SetLevel(logging::kNormal);
  const BareWriter bareWriter(logger.Path());
  for (int line = 0; line < plan.lines; ++line) {
    const std::string text = TextOf(plan, writer, line);
    try {
      if (writer < plan.bare) {
        bareWriter.Write("Mon Nov 23 09:00:00 2026, 244000001, normal: " + text + kLineEnd + "\n");
      } else {
        logger.LogNormal(1, text, 0.0);
      }
    } catch (const std::filesystem::filesystem_error&) {
      ++(writer < plan.bare ? raised.byBareWriters : raised.byLoggers);
    }
  }
}

void RunAll(const Plan& plan, Raised& raised) {
  for (int writer = 0; writer < plan.writers; ++writer) {
    if (fork() != 0) continue;
    WriteAll(plan, writer, raised);
    _exit(0);
  }
  while (wait(nullptr) > 0) continue;
}

struct Count {
  int files = 0, torn = 0, doubled = 0, lostByLoggers = 0, lostByBareWriters = 0;
};

Count CountLines(const Plan& plan) {
  Count count;
  std::vector<std::vector<int>> found(static_cast<std::size_t>(plan.writers),
                                      std::vector<int>(static_cast<std::size_t>(plan.lines)));
  for (const auto& file : std::filesystem::directory_iterator(logging::GetLogDirectory().path)) {
    ++count.files;
    std::ifstream stream(file.path());
    for (std::string line; std::getline(stream, line);) {
      constexpr std::size_t kTextAt = 45;  // behind time, code and level, whose lengths are the same in every line
      int writer = -1, number = -1;
      const bool isOurs = line.size() > kTextAt && std::sscanf(&line[kTextAt], "%d %d ", &writer, &number) == 2 &&
                          writer >= 0 && writer < plan.writers && number >= 0 && number < plan.lines &&
                          line.substr(kTextAt) == TextOf(plan, writer, number) + kLineEnd;
      if (isOurs) {
        ++found[static_cast<std::size_t>(writer)][static_cast<std::size_t>(number)];
      } else {
        ++count.torn;
      }
    }
  }
  for (int writer = 0; writer < plan.writers; ++writer) {
    for (const int times : found[static_cast<std::size_t>(writer)]) {
      count.doubled += times > 1;
      (writer < plan.bare ? count.lostByBareWriters : count.lostByLoggers) += times == 0;
    }
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  Plan plan;
  CLI::App app("Lets several processes log at once through rotation, and counts what has become of their lines.");
  app.add_option("--writers", plan.writers, "processes")->check(CLI::Range(1, 100));
  app.add_option("--bare", plan.bare, "of them, those that follow the framework's bare rule")
      ->check(CLI::Range(0, 100));
  app.add_option("--lines", plan.lines, "that each writes")->check(CLI::Range(1, 10000000));
  app.add_option("--bytes", plan.bytes, "of each line's text")->check(CLI::Range(1, 100000));
  CLI11_PARSE(app, argc, argv);

  const TempDirectory directory;
  setenv("ZQRMT_LOG_DIRECTORY", directory.Path().c_str(), 1);
  void* const shared = mmap(nullptr, sizeof(Raised), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return EXIT_FAILURE;
  Raised& raised = *new (shared) Raised{};
  RunAll(plan, raised);
  const Count count = CountLines(plan);
  std::printf(
      "%d loggers and %d bare writers, %d lines each, %d files\n"
      "loggers:      %d lines lost, %d raised\n"
      "bare writers: %d lines lost, %d raised\n"
      "torn lines: %d, doubled lines: %d\n",
      plan.writers - plan.bare, plan.bare, plan.lines, count.files, count.lostByLoggers, raised.byLoggers.load(),
      count.lostByBareWriters, raised.byBareWriters.load(), count.torn, count.doubled);
  const bool isLost = plan.bare == 0 && count.lostByLoggers != 0;
  return isLost || count.torn != 0 || count.doubled != 0 || raised.byLoggers != 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
