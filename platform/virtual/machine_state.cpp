#include "platform/endpoint_state.h"
#include "platform/virtual/machine.h"

namespace virtual_audio {

namespace {

using Writer = platform::StateWriter;
using platform::WriteFloat;
using platform::WriteText;

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
  for (const Endpoint& endpoint : endpoints_) platform::WriteEndpoint(writer, endpoint);
  writer.EndArray();
  writer.Key("trace");
  writer.StartArray();
  for (const TraceEntry& entry : trace_) WriteCall(writer, entry);
  writer.EndArray();
  writer.EndObject();
  return {text.GetString(), text.GetSize()};
}

}  // namespace virtual_audio
