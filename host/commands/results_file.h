#pragma once

#include <optional>
#include <string>

#include "host/base/output_file.h"
#include "host/commands/commands.h"
#include "host/report/junit.h"

namespace host {

// The file of --junit, or nothing without that option.
class ResultsFile {
 public:
  // Throws Failure for a file that can't be written.
  explicit ResultsFile(const Options& options);

  void Add(const RunRecord& run);

  // Writes the runs that were added, and gives the file's name; nothing without the option. Throws Failure. Called once, at
  // the end.
  std::optional<std::string> Write();

  // The same when the command ends by `failure`, of a test that couldn't begin, `run`: what collects results is to see it.
  // Unless somebody interrupted it, who wants none of it in the place of the results before. That the file can't be
  // written matters less than the failure, so it isn't said.
  void WriteUnbegun(RunRecord run, const Failure& failure) noexcept;

 private:
  std::optional<OutputFile> file_;
  JunitDocument document_;
};

}  // namespace host
