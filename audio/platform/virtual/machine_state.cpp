#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utf8/checked.h>
#include <charconv>
#include <cmath>
#include <iterator>

#include "audio/platform/virtual/machine.h"

namespace virtual_audio {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteText(Writer& writer, std::string_view text) {
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteText(Writer& writer, const WideText& text) {
  std::string narrow;
  utf8::utf16to8(text.begin(), text.end(), std::back_inserter(narrow));
  WriteText(writer, narrow);
}

// The shortest text that reads as the same float, where a double would show the digits that the float doesn't have.
void WriteFloat(Writer& writer, float value) {
  if (!std::isfinite(value)) {
    writer.Null();
    return;
  }
  char text[32];
  const auto end = std::to_chars(std::begin(text), std::end(text), value).ptr;
  writer.RawValue(text, static_cast<std::size_t>(end - text), rapidjson::kNumberType);
}

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

void WriteEndpoint(Writer& writer, const Endpoint& endpoint) {
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

struct ArgumentWriter {
  Writer& writer;
  void operator()(std::int64_t number) const { writer.Int64(number); }
  void operator()(float level) const { WriteFloat(writer, level); }
  void operator()(bool truth) const { writer.Bool(truth); }
  void operator()(const IID& iid) const { WriteText(writer, NameOf(iid)); }
  void operator()(const PROPERTYKEY& key) const { WriteText(writer, NameOf(key)); }
};

void WriteCall(Writer& writer, const TraceEntry& entry) {
  writer.StartObject();
  writer.Key("operation");
  WriteText(writer, kOperations[entry.operation.Index()]);
  if (entry.endpoint != nullptr) {
    writer.Key("endpoint");
    WriteText(writer, entry.endpoint->id);
  }
  writer.Key("arguments");
  writer.StartObject();
  for (const Argument& argument : entry.arguments) {
    writer.Key(argument.name);
    std::visit(ArgumentWriter{writer}, argument.value);
  }
  writer.EndObject();
  writer.Key("status");
  writer.Int(entry.status);
  writer.EndObject();
}

}  // namespace

std::string Machine::StateText() const {
  rapidjson::StringBuffer text;
  Writer writer(text);
  writer.StartObject();
  writer.Key("platform");
  writer.String("virtual");
  writer.Key("liveObjects");
  writer.Int64(liveObjects_);
  writer.Key("endpoints");
  writer.StartArray();
  for (const Endpoint& endpoint : endpoints_) WriteEndpoint(writer, endpoint);
  writer.EndArray();
  writer.Key("trace");
  writer.StartArray();
  for (const TraceEntry& entry : trace_) WriteCall(writer, entry);
  writer.EndArray();
  writer.EndObject();
  return {text.GetString(), text.GetSize()};
}

}  // namespace virtual_audio
