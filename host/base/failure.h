#pragma once

#include <exception>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "host/base/exit_codes.h"
#include "host/base/member.h"

namespace host {

// One of the endpoints that an ambiguous name could mean.
struct Candidate {
  std::string name, id;

  static constexpr auto Members() { return std::tuple(Member("name", &Candidate::name), Member("id", &Candidate::id)); }
};

// Why a command can't do what it was asked. Thrown where it is found out, shown at one place in main. All texts are
// UTF-8.
class Failure : public std::exception {
 public:
  Failure() = default;
  // `message` says in one sentence what is wrong, `advice` in another what to do about it.
  Failure(ExitCode code, std::string what_is_wrong, std::string what_to_do, std::vector<Candidate> meant = {})
      : exitCode(code),
        message(std::move(what_is_wrong)),
        advice(std::move(what_to_do)),
        candidates(std::move(meant)) {}
  const char* what() const noexcept override { return message.c_str(); }

  ExitCode exitCode = ExitCode::kBroken;
  std::string message, advice;
  std::vector<Candidate> candidates;

  static constexpr auto Members() {
    return std::tuple(Member("message", &Failure::message), Member("advice", &Failure::advice),
                      Member("exitCode", &Failure::exitCode), Member("candidates", &Failure::candidates));
  }
};

}  // namespace host
