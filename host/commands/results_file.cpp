#include "host/commands/results_file.h"

#include <utility>

namespace host {

ResultsFile::ResultsFile(const Options& options) {
  if (options.junit.has_value()) file_.emplace(*options.junit, ".xml", "--junit");
}

void ResultsFile::Add(const RunRecord& run) {
  if (file_.has_value()) document_.Add(run);
}

std::optional<std::string> ResultsFile::Write() {
  if (!file_.has_value()) return std::nullopt;
  file_->Write(document_.Text());
  file_->Commit();
  return file_->Name();
}

void ResultsFile::WriteUnbegun(RunRecord run, const Failure& failure) noexcept {
  if (failure.exitCode == ExitCode::kInterrupted) return;
  try {
    run.failure = failure;
    Add(run);
    Write();
  } catch (const std::exception&) {
    // As said above.
  }
}

}  // namespace host
