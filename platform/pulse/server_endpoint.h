#pragma once

#include <string>
#include <vector>

#include "platform/endpoint_state.h"
#include "platform/pulse/connection.h"

namespace pulse_audio {

// A sink or a source as the server described it last. Its name there is its key, and its id in wide text. Its levels are
// the server's volumes with PA_VOLUME_NORM as 1.0.
struct ServerEndpoint : platform::EndpointState {
  pa_channel_map map;
  pa_cvolume volume;
  bool hasFlatVolume;  // a stream's volume is the endpoint's, unless it is given as a relative one
};

struct Server {
  std::string name, version;
  std::string defaultSink, defaultSource;
};

// Ask the server, with the lock held. S_OK, or a failure as of Connection::StatusOf. Throw std::bad_alloc.
HRESULT GetServer(Connection& connection, Server* server);
// Sinks come first. An endpoint stands before any whose id is a piece of its own, so that whoever looks for the first
// id that a text contains finds the endpoint that the text names whole.
HRESULT ListEndpoints(Connection& connection, std::vector<ServerEndpoint>* endpoints);
// Default roles are left out. AUDCLNT_E_DEVICE_INVALIDATED when there is no such endpoint any more.
HRESULT FindEndpoint(Connection& connection, const platform::EndpointKey& key, ServerEndpoint* endpoint);

}  // namespace pulse_audio
