#pragma once

#include <string>
#include <vector>

#include "platform/endpoint_state.h"
#include "platform/pulse/connection.h"

namespace pulse_audio {

// What names an endpoint on the server: a sink's and a source's name are looked up apart.
struct EndpointName {
  EDataFlow flow;
  std::string name;
};

// A sink or a source as the server described it last. Its id is its name, its levels are the server's volumes with
// PA_VOLUME_NORM as 1.0.
struct Endpoint : platform::EndpointState {
  std::string serverName;
  pa_channel_map map;
  pa_cvolume volume;
  bool hasFlatVolume;  // a stream's volume is the endpoint's, unless it is given as a relative one

  EndpointName Name() const { return {flow, serverName}; }
};

struct Server {
  std::string name, version;
  std::string defaultSink, defaultSource;
};

// Ask the server, with the lock held. S_OK, or a failure as of Connection::StatusOf. Throw std::bad_alloc.
HRESULT GetServer(Connection& connection, Server* server);
// Sinks come first. An endpoint stands before any whose id is a piece of its own, so that whoever looks for the first
// id that a text contains finds the endpoint that the text names whole.
HRESULT ListEndpoints(Connection& connection, std::vector<Endpoint>* endpoints);
// Default roles are left out. AUDCLNT_E_DEVICE_INVALIDATED when there is no such endpoint any more.
HRESULT FindEndpoint(Connection& connection, const EndpointName& name, Endpoint* endpoint);

}  // namespace pulse_audio
