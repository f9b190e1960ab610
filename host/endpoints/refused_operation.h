#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "host/base/member.h"

namespace host {

// An operation of the audio system that failed.
struct RefusedOperation {
  std::string operation;                // as "IAudioClient::Start"
  std::optional<std::string> endpoint;  // the name of the endpoint that it was on
  std::int32_t status = 0;              // as Core Audio publishes them

  static constexpr auto Members() {
    using R = RefusedOperation;
    return std::tuple(Member("operation", &R::operation), Member("endpoint", &R::endpoint),
                      Member("status", &R::status));
  }
};

// The last one that a platform's state text (docs/virtual-machine.md, docs/sound-server.md) tells of; nothing when it
// tells of none.
std::optional<RefusedOperation> RefusedOperationIn(const std::string& stateText);

// What failed, for a person: "IAudioClient::Start on 'Speaker' gave 0x88890026".
std::string RefusalText(const RefusedOperation& refused);

// What it probably comes from and what to do about it, in a sentence or two; empty for a status that says too little.
std::string AdviceFor(const RefusedOperation& refused);

}  // namespace host
