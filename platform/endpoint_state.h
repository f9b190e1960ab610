#pragma once

#include <string>
#include <vector>

#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace platform {

// How an audio system finds an endpoint. No two endpoints of one flow have the same name.
struct EndpointKey {
  EDataFlow flow = eRender;
  std::string name;  // in the audio system's own encoding
};

// An endpoint as it is now: what every audio system can tell about it.
struct EndpointState {
  EndpointKey key;
  std::u16string id;    // what callers know it by, different for each endpoint
  std::u16string name;  // for people
  DWORD state = DEVICE_STATE_ACTIVE;
  std::vector<ERole> defaultRoles;  // in which it is its flow's default; empty unless it is active
  std::vector<float> levels;        // a scalar for each channel, on the endpoint's own taper; 1.0 is full
  bool muted = false;
  SampleFormat format;  // what the endpoint itself runs at
};

}  // namespace platform
