#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

enum class Flow { kRender, kCapture };
enum class EndpointState { kActive, kDisabled, kNotPresent, kUnplugged };

struct DeviceFormat {
  unsigned channels, rate, bits;  // rate in Hz, bits per sample
  const char* encoding;           // "pcm", "float" or "other"
};

// One audio endpoint as the system showed it when it was read.
struct Endpoint {
  std::string id, name;
  Flow flow = Flow::kRender;
  EndpointState state = EndpointState::kActive;
  std::vector<std::string>
      defaultFor;             // the roles that it is the default of: "console", "multimedia", "communications"
  std::vector<float> levels;  // scalar, one a channel; empty when not known, as for an inactive endpoint
  std::optional<bool> muted;
  std::optional<DeviceFormat> format;
};

// "render", "capture".
const char* FlowWord(Flow flow);
// "active", "disabled", "notpresent", "unplugged".
const char* StateWord(EndpointState state);

// Every endpoint, inactive ones too, the render endpoints first, else in the platform's order. The thread must be on a
// platform (platform.h). Throws Failure when the system won't list them; a property that it won't tell is left out.
std::vector<Endpoint> ReadEndpoints();

}  // namespace host
