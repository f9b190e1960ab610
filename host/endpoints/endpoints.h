#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/sample_format.h"

namespace host {

enum class Flow { kRender, kCapture };
enum class EndpointState { kActive, kDisabled, kNotPresent, kUnplugged };

// "render", "capture".
const char* Word(Flow flow);
// "active", "disabled", "notpresent", "unplugged".
const char* Word(EndpointState state);

// One audio endpoint as the system showed it when it was read.
struct Endpoint {
  std::string id, name;
  Flow flow = Flow::kRender;
  EndpointState state = EndpointState::kActive;
  std::vector<std::string> defaultFor;       // among "console", "multimedia" and "communications"
  std::optional<std::vector<float>> levels;  // scalars, one a channel; nothing when not known, as of an inactive one
  std::optional<bool> muted;
  std::optional<platform::SampleFormat> format;  // nothing also when it is neither integer PCM nor float
};

// Whether the endpoint is the default of a role.
bool IsDefaultFor(const Endpoint& endpoint, const std::string& role);

// Scalars as a person reads them: "25 % 75 %".
std::string LevelsText(const std::vector<float>& levels);

// Every endpoint, inactive ones too, the render endpoints first, else in the platform's order. The thread must be on a
// platform (platform.h). Throws Failure when the system won't list them; a property that it won't tell is left out.
std::vector<Endpoint> ReadEndpoints();

}  // namespace host
