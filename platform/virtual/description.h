#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/core_audio.h"
#include "platform/endpoint_state.h"
#include "platform/front/operation.h"
#include "platform/sample_format.h"
#include "platform/virtual/clock.h"

namespace virtual_audio {

using platform::SampleFormat;

// One render endpoint that a capture endpoint hears.
struct Hearing {
  std::size_t endpoint;  // its place in MachineDescription::endpoints
  double gain = 1.0;
  Time delay = 0;
};

// One condition that the sound on its way to a capture endpoint meets. docs/virtual-machine.md says what each kind does and
// which members it has; the members are named after the keys.
struct PathCondition {
  // In the order in which the sound meets them.
  enum class Kind {
    kSpeed,
    kEcho,
    kLowpass,
    kCut,
    kHum,
    kTone,
    kNoise,
    kOffset,
    kClip,
    kRepeat,
    kGap,
    kDead,
    kInverted
  };

  Kind kind;
  double atMs = 0.0, lengthMs = 0.0, delayMs = 0.0;
  double hz = 0.0;
  double level = 0.0;  // 1.0 is full scale
  double gain = 0.0;
  double ratio = 0.0, ratioDb = 0.0;
  double channel = 0.0;  // a whole number
};

// docs/virtual-machine.md says what each key means; the members are named after the keys.
struct EndpointDescription : platform::EndpointState {
  double noise = 0.0;
  bool marksSilence = false;
  bool takesEveryPcm = true;            // what `closest` null says
  std::optional<SampleFormat> closest;  // the one format that is taken; nothing with takesEveryPcm false takes none
  std::vector<Hearing> hears;
  std::vector<PathCondition> path;  // sorted by kind
};

struct MachineDescription {
  bool hasVirtualClock = false;
  std::uint64_t seed = 1;
  std::vector<EndpointDescription> endpoints;
  std::vector<platform::Fault> faults;
};

// Reads a description, a JSON text in UTF-8. Throws platform::PlatformError with a sentence that names the place of a
// mistake.
MachineDescription ParseDescription(std::string_view json);

}  // namespace virtual_audio
