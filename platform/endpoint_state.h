#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace platform {

using WideText = std::basic_string<WCHAR>;

// An endpoint as it is now, in what every platform tells of one.
struct EndpointState {
  WideText id;
  WideText name;
  EDataFlow flow = eRender;
  DWORD state = DEVICE_STATE_ACTIVE;
  std::vector<ERole> defaultRoles;
  std::vector<float> levels;  // a scalar for each channel
  bool muted = false;
  SampleFormat format;
};

// Pieces of the text of AudioPlatformState (docs/virtual-machine.md). They throw std::bad_alloc.
using StateWriter = rapidjson::Writer<rapidjson::StringBuffer>;
void WriteText(StateWriter& writer, std::string_view text);
void WriteText(StateWriter& writer, const WideText& text);
void WriteFloat(StateWriter& writer, float value);
void WriteEndpoint(StateWriter& writer, const EndpointState& endpoint);

}  // namespace platform
