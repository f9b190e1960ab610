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

using Json = nlohmann::ordered_json;

// The shortest text that reads as the same float, where a double would show the digits that the float doesn't have.
Json Number(float value) {
  if (!std::isfinite(value)) return nullptr;
  char text[32];
  return Json::parse(std::begin(text), std::to_chars(std::begin(text), std::end(text), value).ptr);
}

const char* NameOfState(DWORD state) {
  switch (state) {
    case DEVICE_STATE_ACTIVE: return "active";
    case DEVICE_STATE_DISABLED: return "disabled";
    case DEVICE_STATE_NOTPRESENT: return "notpresent";
    default: return "unplugged";
  }
}

std::string TextOf(const GUID& id) {
  char text[40];
  const std::uint8_t* rest = id.Data4;
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.Data1), id.Data2, id.Data3, rest[0], rest[1], rest[2], rest[3], rest[4],
                rest[5], rest[6], rest[7]);
  return text;
}

// An argument's value: an interface or a key goes by its published name, or by the text form of its identifier.
struct ArgumentValue {
  Json operator()(std::int64_t number) const { return number; }
  Json operator()(float level) const { return Number(level); }
  Json operator()(bool truth) const { return truth; }

  Json operator()(const IID& iid) const {
    const std::pair<const IID&, const char*> known[] = {
        {InterfaceId<IUnknown>(), "IUnknown"},
        {InterfaceId<IMMDeviceEnumerator>(), "IMMDeviceEnumerator"},
        {InterfaceId<IAudioClient>(), "IAudioClient"},
        {InterfaceId<IAudioRenderClient>(), "IAudioRenderClient"},
        {InterfaceId<IAudioCaptureClient>(), "IAudioCaptureClient"},
        {InterfaceId<IAudioEndpointVolume>(), "IAudioEndpointVolume"},
    };
    for (const auto& [id, name] : known) {
      if (id == iid) return name;
    }
    return TextOf(iid);
  }

  Json operator()(const PROPERTYKEY& key) const {
    if (key == PKEY_AudioEngine_DeviceFormat) return "PKEY_AudioEngine_DeviceFormat";
    if (key == PKEY_Device_FriendlyName) return "PKEY_Device_FriendlyName";
    return TextOf(key.fmtid) + ' ' + std::to_string(key.pid);
  }
};

Json EndpointJson(const EndpointState& endpoint) {
  constexpr const char* kFlows[] = {"render", "capture"};
  constexpr const char* kRoles[] = {"console", "multimedia", "communications"};
  Json roles = Json::array(), levels = Json::array();
  for (const ERole role : endpoint.defaultRoles) roles.push_back(kRoles[role]);
  for (const float level : endpoint.levels) levels.push_back(Number(level));
  return {{"id", text::ToUtf8(endpoint.id)},
          {"name", text::ToUtf8(endpoint.name)},
          {"flow", kFlows[endpoint.key.flow]},
          {"state", NameOfState(endpoint.state)},
          {"default", std::move(roles)},
          {"levels", std::move(levels)},
          {"muted", endpoint.muted},
          {"format",
           {{"channels", endpoint.format.channels}, {"rate", endpoint.format.rate}, {"bits", endpoint.format.bits}}}};
}

Json CallJson(const TraceEntry& entry) {
  Json call = {{"operation", kOperations[entry.operation.Index()]}};
  if (entry.endpoint != nullptr) call["endpoint"] = text::ToUtf8(entry.endpoint->id);
  Json& arguments = call["arguments"] = Json::object();
  for (const Argument& argument : entry.arguments) {
    arguments[argument.name] = std::visit(ArgumentValue(), argument.value);
  }
  call["status"] = entry.status;
  return call;
}

}  // namespace

std::string StateText(Backend& backend, const Journal& journal) {
  std::optional<ServerInfo> server;
  std::vector<EndpointState> endpoints;
  HRESULT status = backend.DescribeServer(&server);
  if (status == S_OK) status = backend.List(&endpoints);

  Json state = {{"platform", backend.Name()}};
  if (journal.IsTraced()) {
    state["liveObjects"] = journal.LiveObjects();
  } else {
    state["status"] = status;
  }
  if (server) state["server"] = {{"name", server->name}, {"version", server->version}};
  Json& list = state["endpoints"] = Json::array();
  for (const EndpointState& endpoint : endpoints) list.push_back(EndpointJson(endpoint));
  if (const std::optional<Refusal>& refusal = journal.LastRefusal()) {
    state["lastRefusal"] = {
        {"operation", kOperations[refusal->operation.Index()]},
        {"endpoint", refusal->endpoint == nullptr ? Json() : Json(text::ToUtf8(refusal->endpoint->name))},
        {"status", refusal->status}};
  }
  if (journal.IsTraced()) {
    Json& trace = state["trace"] = Json::array();
    for (const TraceEntry& entry : journal.Trace()) trace.push_back(CallJson(entry));
  }
  // What a server calls itself needn't be UTF-8.
  return state.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platform
