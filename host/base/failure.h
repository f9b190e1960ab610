#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "host/base/exit_codes.h"

namespace host {

struct Candidate {
  std::string name, id;
};

// Why a command can't give an answer. Thrown where it is found out, shown at one place in main. All texts are UTF-8.
class Failure : public std::exception {
 public:
  // `message` says in one sentence what is wrong, `advice` in another what to do about it.
  Failure(ExitCode code, std::string what_is_wrong, std::string what_to_do, std::vector<Candidate> meant = {})
      : exitCode(code),
        message(std::move(what_is_wrong)),
        advice(std::move(what_to_do)),
        candidates(std::move(meant)) {}
  const char* what() const noexcept override { return message.c_str(); }

  ExitCode exitCode;
  std::string message, advice;
  std::vector<Candidate> candidates;  // the endpoints that an ambiguous name could mean
};

}  // namespace host
