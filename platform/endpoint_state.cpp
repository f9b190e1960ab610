#include "platform/endpoint_state.h"

#include <utf8/checked.h>
#include <charconv>
#include <cmath>
#include <iterator>

namespace platform {

namespace {

const char* StateName(DWORD state) {
  switch (state) {
    case DEVICE_STATE_ACTIVE:
      return "active";
    case DEVICE_STATE_DISABLED:
      return "disabled";
    case DEVICE_STATE_NOTPRESENT:
      return "notpresent";
    default:
      return "unplugged";
  }
}

}  // namespace

void WriteText(StateWriter& writer, std::string_view text) {
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteText(StateWriter& writer, const WideText& text) {
  std::string narrow;
  utf8::utf16to8(text.begin(), text.end(), std::back_inserter(narrow));
  WriteText(writer, narrow);
}

// The shortest text that reads as the same float, where a double would show the digits that the float doesn't have.
void WriteFloat(StateWriter& writer, float value) {
  if (!std::isfinite(value)) {
    writer.Null();
    return;
  }
  char text[32];
  const auto end = std::to_chars(std::begin(text), std::end(text), value).ptr;
  writer.RawValue(text, static_cast<std::size_t>(end - text), rapidjson::kNumberType);
}

void WriteEndpoint(StateWriter& writer, const EndpointState& endpoint) {
  constexpr const char* kFlows[] = {"render", "capture"};
  constexpr const char* kRoles[] = {"console", "multimedia", "communications"};
  const auto number = [&writer](const char* key, unsigned value) {
    writer.Key(key);
    writer.Uint(value);
  };
  writer.StartObject();
  writer.Key("id");
  WriteText(writer, endpoint.id);
  writer.Key("name");
  WriteText(writer, endpoint.name);
  writer.Key("flow");
  writer.String(kFlows[endpoint.flow]);
  writer.Key("state");
  writer.String(StateName(endpoint.state));
  writer.Key("default");
  writer.StartArray();
  for (const ERole role : endpoint.defaultRoles) writer.String(kRoles[role]);
  writer.EndArray();
  writer.Key("levels");
  writer.StartArray();
  for (const float level : endpoint.levels) WriteFloat(writer, level);
  writer.EndArray();
  writer.Key("muted");
  writer.Bool(endpoint.muted);
  writer.Key("format");
  writer.StartObject();
  number("channels", endpoint.format.channels);
  number("rate", endpoint.format.rate);
  number("bits", endpoint.format.bits);
  writer.EndObject();
  writer.EndObject();
}

}  // namespace platform
