#include "platform/pulse/server_endpoint.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <new>
#include <span>

#include "text/utf.h"

namespace pulse_audio {

namespace {

std::u16string Wide(const char* text) { return text::ToUtf16(text::ValidUtf8(text)); }

// Published as the SPEAKER_ constants of WAVEFORMATEXTENSIBLE, from the lowest bit.
constexpr pa_channel_position_t kSpeakers[] = {PA_CHANNEL_POSITION_FRONT_LEFT,
                                               PA_CHANNEL_POSITION_FRONT_RIGHT,
                                               PA_CHANNEL_POSITION_FRONT_CENTER,
                                               PA_CHANNEL_POSITION_LFE,
                                               PA_CHANNEL_POSITION_REAR_LEFT,
                                               PA_CHANNEL_POSITION_REAR_RIGHT,
                                               PA_CHANNEL_POSITION_FRONT_LEFT_OF_CENTER,
                                               PA_CHANNEL_POSITION_FRONT_RIGHT_OF_CENTER,
                                               PA_CHANNEL_POSITION_REAR_CENTER,
                                               PA_CHANNEL_POSITION_SIDE_LEFT,
                                               PA_CHANNEL_POSITION_SIDE_RIGHT,
                                               PA_CHANNEL_POSITION_TOP_CENTER,
                                               PA_CHANNEL_POSITION_TOP_FRONT_LEFT,
                                               PA_CHANNEL_POSITION_TOP_FRONT_CENTER,
                                               PA_CHANNEL_POSITION_TOP_FRONT_RIGHT,
                                               PA_CHANNEL_POSITION_TOP_REAR_LEFT,
                                               PA_CHANNEL_POSITION_TOP_REAR_CENTER,
                                               PA_CHANNEL_POSITION_TOP_REAR_RIGHT};

DWORD ChannelMask(const pa_channel_map& map) {
  DWORD mask = 0;
  for (const pa_channel_position_t position : std::span(map.map, map.channels)) {
    const auto place = std::find(std::begin(kSpeakers), std::end(kSpeakers),
                                 position == PA_CHANNEL_POSITION_MONO ? PA_CHANNEL_POSITION_FRONT_CENTER : position);
    if (place != std::end(kSpeakers)) mask |= DWORD{1} << (place - std::begin(kSpeakers));
  }
  return mask;
}

// The integer format that the endpoint is offered in. The server converts, so what is told of a format with another
// layout is the precision: floats are given as the 16 bits that nearly all hardware has.
platform::SampleFormat FormatOf(const pa_sample_spec& spec, const pa_channel_map& map) {
  platform::SampleFormat format{.tag = WAVE_FORMAT_EXTENSIBLE, .channels = spec.channels, .rate = spec.rate};
  switch (spec.format) {
    case PA_SAMPLE_S24LE:
    case PA_SAMPLE_S24BE:
    case PA_SAMPLE_S24_32LE:
    case PA_SAMPLE_S24_32BE: format.bits = 24; break;
    case PA_SAMPLE_S32LE:
    case PA_SAMPLE_S32BE: format.bits = 32; break;
    default: format.bits = 16;
  }
  format.validBits = format.bits;
  format.channelMask = ChannelMask(map);
  return format;
}

constexpr EDataFlow FlowOf(const pa_sink_info&) { return eRender; }
constexpr EDataFlow FlowOf(const pa_source_info&) { return eCapture; }
bool HasFlatVolume(const pa_sink_info& sink) { return (sink.flags & PA_SINK_FLAT_VOLUME) != 0; }
bool HasFlatVolume(const pa_source_info& source) { return (source.flags & PA_SOURCE_FLAT_VOLUME) != 0; }

template <class Info>
ServerEndpoint EndpointFrom(const Info& info) {
  ServerEndpoint endpoint;
  endpoint.key = {FlowOf(info), info.name};
  endpoint.id = Wide(info.name);
  endpoint.name = info.description == nullptr ? endpoint.id : Wide(info.description);
  // Without a port nothing can be unplugged.
  const std::span ports(info.ports, info.n_ports);
  const bool isUnplugged = !ports.empty() && std::all_of(ports.begin(), ports.end(), [](const auto* port) {
    return port->available == PA_PORT_AVAILABLE_NO;
  });
  if (isUnplugged) endpoint.state = DEVICE_STATE_UNPLUGGED;
  endpoint.volume = info.volume;
  for (const pa_volume_t volume : std::span(info.volume.values, info.volume.channels)) {
    endpoint.levels.push_back(static_cast<float>(volume) / static_cast<float>(PA_VOLUME_NORM));
  }
  endpoint.muted = info.mute != 0;
  endpoint.map = info.channel_map;
  endpoint.format = FormatOf(info.sample_spec, info.channel_map);
  endpoint.hasFlatVolume = HasFlatVolume(info);
  return endpoint;
}

// What an answer is put into on libpulse's thread, through which no exception may pass.
template <class Content>
struct Answer {
  Content& content;
  int error = PA_OK;
  bool lacksMemory = false;

  HRESULT Finish(Connection& connection, pa_operation* request) {
    const HRESULT status = connection.Finish(request, error);
    if (lacksMemory) throw std::bad_alloc();
    return status;
  }
};

template <class Info>
void Collect(pa_context* context, const Info* info, int end, void* userdata) noexcept {
  auto& answer = *static_cast<Answer<std::vector<ServerEndpoint>>*>(userdata);
  if (end < 0) answer.error = pa_context_errno(context);
  if (end != 0) return;
  try {
    answer.content.push_back(EndpointFrom(*info));
  } catch (...) {
    answer.lacksMemory = true;
  }
}

void TakeServer(pa_context* context, const pa_server_info* info, void* userdata) noexcept {
  auto& answer = *static_cast<Answer<Server>*>(userdata);
  if (info == nullptr) {
    answer.error = pa_context_errno(context);
    return;
  }
  const auto text = [](const char* given) { return given == nullptr ? "" : given; };
  try {
    answer.content = {text(info->server_name), text(info->server_version), text(info->default_sink_name),
                      text(info->default_source_name)};
  } catch (...) {
    answer.lacksMemory = true;
  }
}

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

void PutWholeBeforePiece(std::vector<ServerEndpoint>& endpoints) {
  for (auto next = endpoints.begin(); next != endpoints.end(); ++next) {
    const std::string name = Lower(next->key.name);
    const auto piece = std::find_if(endpoints.begin(), next, [&](const ServerEndpoint& earlier) {
      return earlier.key.flow == next->key.flow && name.find(Lower(earlier.key.name)) != name.npos;
    });
    std::rotate(piece, next, next + 1);
  }
}

}  // namespace

HRESULT GetServer(Connection& connection, Server* server) {
  Answer<Server> answer{*server};
  return answer.Finish(connection, pa_context_get_server_info(connection.Context(), &TakeServer, &answer));
}

HRESULT ListEndpoints(Connection& connection, std::vector<ServerEndpoint>* endpoints) {
  Server server;
  HRESULT status = GetServer(connection, &server);
  if (status != S_OK) return status;
  pa_context* const context = connection.Context();
  Answer<std::vector<ServerEndpoint>> answer{*endpoints};
  status = answer.Finish(connection, pa_context_get_sink_info_list(context, &Collect<pa_sink_info>, &answer));
  if (status != S_OK) return status;
  status = answer.Finish(connection, pa_context_get_source_info_list(context, &Collect<pa_source_info>, &answer));
  if (status != S_OK) return status;
  PutWholeBeforePiece(*endpoints);
  for (ServerEndpoint& endpoint : *endpoints) {
    const std::string& chosen = endpoint.key.flow == eRender ? server.defaultSink : server.defaultSource;
    // As Core Audio has it: what isn't active is no default.
    if (endpoint.key.name != chosen || endpoint.state != DEVICE_STATE_ACTIVE) continue;
    endpoint.defaultRoles = {eConsole, eMultimedia, eCommunications};
  }
  return S_OK;
}

HRESULT FindEndpoint(Connection& connection, const platform::EndpointKey& key, ServerEndpoint* endpoint) {
  std::vector<ServerEndpoint> found;
  Answer<std::vector<ServerEndpoint>> answer{found};
  pa_context* const context = connection.Context();
  pa_operation* const request =
      key.flow == eRender
          ? pa_context_get_sink_info_by_name(context, key.name.c_str(), &Collect<pa_sink_info>, &answer)
          : pa_context_get_source_info_by_name(context, key.name.c_str(), &Collect<pa_source_info>, &answer);
  const HRESULT status = answer.Finish(connection, request);
  if (status != S_OK) return status;
  if (found.empty()) return AUDCLNT_E_DEVICE_INVALIDATED;
  *endpoint = std::move(found.front());
  return S_OK;
}

}  // namespace pulse_audio
