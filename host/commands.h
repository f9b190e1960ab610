#pragma once

#include <optional>
#include <string>

#include "host/answer.h"
#include "host/contract.h"
#include "host/text_output.h"

namespace host {

// What the command line asks for.
struct Options {
  enum class Command { kList, kPlay, kRecord, kRun, kCheck, kVersion };

  Command command = Command::kList;
  std::optional<std::string> endpoint;  // play, record: the endpoint under test
  std::optional<std::string> render;    // record: the endpoint that the tone is played on
  Test test = Test::kPlay;              // run
  std::string contract;                 // run, check: a file, or "-" for standard input
  std::string platform = "virtual";
  std::optional<std::string> module;
  bool all = false;  // check: every finding in the text, not the first few of each kind
  bool quiet = false;
};

// Each carries its command out and gives its answer, the text in `style`. Failure is thrown.
Answer ListEndpoints(const Options& options);
Answer TestEndpoints(const Options& options, const Style& style);
Answer RunContract(const Options& options, const Style& style);
Answer CheckContract(const Options& options);
Answer ShowVersion(const Options& options);

}  // namespace host
