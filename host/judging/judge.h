#pragma once

#include <optional>
#include <string>

#include "host/contract/contract.h"
#include "host/endpoints/refused_operation.h"
#include "host/judging/verdict.h"

namespace host {

// Judges what the module answered, and for a record test what the host heard itself. An outcome that is no pass is the
// verdict "failed" in the module's words and, for an outcome that comes from the audio system, with what failed there; a
// passed playback is a pass.
Verdict Judge(Test test, const Outcome& outcome, const std::optional<RefusedOperation>& refused,
              const Evidence& evidence, const Limits& limits);

}  // namespace host
