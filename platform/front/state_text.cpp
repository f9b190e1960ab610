#include "platform/front/state_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

#include "text/utf.h"

namespace platform {

namespace {

using Json = nlohmann::json;

// The text is put together from pieces. The library's own objects and lists end by way of a heap-allocated stack, and so
// end the process where there is no memory; its texts and numbers don't.
using Members = std::vector<std::pair<std::string_view, std::string>>;

std::string Quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

std::string JsonObject(const Members& members) {
  std::string text;
  for (const auto& [key, value] : members) text += (text.empty() ? "" : ",") + Quoted(key) + ':' + value;
  return '{' + text + '}';
}

// The text of each item, as `textOf` gives it.
template <class Items, class TextOf>
std::string List(const Items& items, TextOf textOf) {
  std::string text;
  for (const auto& item : items) text += (text.empty() ? "" : ",") + textOf(item);
  return '[' + text + ']';
}

// What a server calls itself needn't be UTF-8.
std::string Text(std::string text) {
  return Json(std::move(text)).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string Text(const std::u16string& text) { return Text(text::ToUtf8(text)); }

std::string Flag(bool flag) { return flag ? "true" : "false"; }

// The shortest text that reads as the same float, where a double would show the digits that the float doesn't have.
std::string Number(float value) {
  if (!std::isfinite(value)) return "null";
  char text[32];
  return Json::parse(std::begin(text), std::to_chars(std::begin(text), std::end(text), value).ptr).dump();
}

const char* NameOfState(DWORD state) {
  switch (state) {
    case DEVICE_STATE_ACTIVE: return "active";
    case DEVICE_STATE_DISABLED: return "disabled";
    case DEVICE_STATE_NOTPRESENT: return "notpresent";
    default: return "unplugged";
  }
}

std::string IdText(const GUID& id) {
  char text[40];
  const std::uint8_t* rest = id.Data4;
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.Data1), id.Data2, id.Data3, rest[0], rest[1], rest[2], rest[3], rest[4],
                rest[5], rest[6], rest[7]);
  return text;
}

// An argument's value: an interface or a key goes by its published name, or by the text form of its identifier.
struct ArgumentValue {
  std::string operator()(std::int64_t number) const { return std::to_string(number); }
  std::string operator()(float level) const { return Number(level); }
  std::string operator()(bool truth) const { return Flag(truth); }

  std::string operator()(const IID& iid) const {
    const std::pair<const IID&, const char*> known[] = {
        {InterfaceId<IUnknown>(), "IUnknown"},
        {InterfaceId<IMMDeviceEnumerator>(), "IMMDeviceEnumerator"},
        {InterfaceId<IAudioClient>(), "IAudioClient"},
        {InterfaceId<IAudioRenderClient>(), "IAudioRenderClient"},
        {InterfaceId<IAudioCaptureClient>(), "IAudioCaptureClient"},
        {InterfaceId<IAudioEndpointVolume>(), "IAudioEndpointVolume"},
    };
    for (const auto& [id, name] : known) {
      if (id == iid) return Quoted(name);
    }
    return Quoted(IdText(iid));
  }

  std::string operator()(const PROPERTYKEY& key) const {
    if (key == PKEY_AudioEngine_DeviceFormat) return Quoted("PKEY_AudioEngine_DeviceFormat");
    if (key == PKEY_Device_FriendlyName) return Quoted("PKEY_Device_FriendlyName");
    return Quoted(IdText(key.fmtid) + ' ' + std::to_string(key.pid));
  }
};

std::string EndpointText(const EndpointState& endpoint) {
  constexpr const char* kFlows[] = {"render", "capture"};
  constexpr const char* kRoles[] = {"console", "multimedia", "communications"};
  return JsonObject({{"id", Text(endpoint.id)},
                     {"name", Text(endpoint.name)},
                     {"flow", Quoted(kFlows[endpoint.key.flow])},
                     {"state", Quoted(NameOfState(endpoint.state))},
                     {"default", List(endpoint.defaultRoles, [&](ERole role) { return Quoted(kRoles[role]); })},
                     {"levels", List(endpoint.levels, Number)},
                     {"muted", Flag(endpoint.muted)},
                     {"format", JsonObject({{"channels", std::to_string(endpoint.format.channels)},
                                            {"rate", std::to_string(endpoint.format.rate)},
                                            {"bits", std::to_string(endpoint.format.bits)}})}});
}

std::string CallText(const TraceEntry& entry) {
  Members call = {{"operation", Quoted(kOperations[entry.operation.Index()])}};
  if (entry.endpoint != nullptr) call.emplace_back("endpoint", Text(entry.endpoint->id));
  Members arguments;
  for (const Argument& argument : entry.arguments) {
    arguments.emplace_back(argument.name, std::visit(ArgumentValue(), argument.value));
  }
  call.emplace_back("arguments", JsonObject(arguments));
  call.emplace_back("status", std::to_string(entry.status));
  return JsonObject(call);
}

}  // namespace

std::string StateText(Backend& backend, const Journal& journal) {
  std::optional<ServerInfo> server;
  std::vector<EndpointState> endpoints;
  HRESULT status = backend.DescribeServer(&server);
  if (status == S_OK) status = backend.List(&endpoints);

  Members state = {{"platform", Text(backend.Name())}};
  if (journal.IsTraced()) {
    state.emplace_back("liveObjects", std::to_string(journal.LiveObjects()));
  } else {
    state.emplace_back("status", std::to_string(status));
  }
  if (server) {
    state.emplace_back("server", JsonObject({{"name", Text(server->name)}, {"version", Text(server->version)}}));
  }
  state.emplace_back("endpoints", List(endpoints, EndpointText));
  if (const std::optional<Refusal>& refusal = journal.LastRefusal()) {
    state.emplace_back("lastRefusal",
                       JsonObject({{"operation", Quoted(kOperations[refusal->operation.Index()])},
                                   {"endpoint", refusal->endpoint == nullptr ? "null" : Text(refusal->endpoint->name)},
                                   {"status", std::to_string(refusal->status)}}));
  }
  if (journal.IsTraced()) state.emplace_back("trace", List(journal.Trace(), CallText));
  if (journal.UntracedCalls() > 0) state.emplace_back("untracedCalls", std::to_string(journal.UntracedCalls()));
  return JsonObject(state);
}

}  // namespace platform
