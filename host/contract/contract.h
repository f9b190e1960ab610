#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace host {

enum class Test { kPlay, kRecord };

// "play" or "record".
const char* TestWord(Test test);

// The data contract, as a JSON text, for a test of the endpoint with the id `deviceId`. `renderId` is the endpoint that
// the record test plays the tone on; with an empty one it listens for three seconds. The playback test ignores it.
std::string BuildContract(Test test, const std::string& deviceId, const std::string& renderId);

// What the host learns from a reply.
struct Outcome {
  int returnCode = 0;
  std::string returnMessage;
  double maxAmplitude = 0.0;  // largest absolute sample, full scale is 1.0; only a passed record test sets it
};

// Nothing when `reply` isn't JSON or holds no outcome.
std::optional<Outcome> ReadReply(std::string_view reply);

bool Passed(Test test, const Outcome& outcome);

// What a person can do about an outcome that isn't a pass, in a sentence or two.
std::string AdviceFor(const Outcome& outcome);

// Where and why a text stops being JSON with values that the module can take. Lines and columns count from 1, columns
// in characters.
struct JsonFault {
  std::size_t line, column;
  std::string reason;
};
// `text` must be valid UTF-8 without a NUL.
std::optional<JsonFault> FindJsonFault(std::string_view text);

}  // namespace host
