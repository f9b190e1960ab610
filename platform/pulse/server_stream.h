#pragma once

#include <cstdint>
#include <functional>

#include "platform/core_audio.h"
#include "platform/pulse/connection.h"
#include "platform/pulse/server_endpoint.h"
#include "platform/sample_format.h"

namespace pulse_audio {

// A stream on the server, of either direction. It stays on its endpoint: when that goes, the stream fails with
// AUDCLNT_E_DEVICE_INVALIDATED. It ends with this object. All but the constructor and the destructor need the
// connection's lock.
class ServerStream {
 public:
  ServerStream(Connection& connection, const platform::SampleFormat& format)
      : connection_(connection), format_(format) {}
  ServerStream(const ServerStream&) = delete;
  ServerStream& operator=(const ServerStream&) = delete;
  // None of its callbacks comes any more.
  ~ServerStream();

  // Sets the stream up, halted. `connect` asks the server for a stream of the direction; it gives a negative number for a
  // request that can't be made. The stream's own volume is full, whatever the server remembers of earlier streams.
  HRESULT Open(const ServerEndpoint& endpoint, const std::function<int(pa_stream*)>& connect);

  // S_OK while the stream can be used.
  HRESULT Status() const;
  HRESULT Run(bool isRunning);
  HRESULT UpdateTiming(const pa_timing_info** timing);

  const platform::SampleFormat& Format() const { return format_; }
  pa_stream* Handle() const { return stream_; }
  bool IsGood() const { return PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)); }
  // Of 10 ms, in bytes.
  std::uint32_t PacketBytes() const { return format_.rate / 100 * format_.FrameBytes(); }
  // The status for a call of libpulse that has just failed.
  HRESULT LastStatus() const { return connection_.StatusOf(pa_context_errno(connection_.Context())); }

 private:
  HRESULT Create(const ServerEndpoint& endpoint);
  HRESULT SetFullVolume(const ServerEndpoint& endpoint);

  Connection& connection_;
  const platform::SampleFormat format_;
  pa_stream* stream_ = nullptr;
};

}  // namespace pulse_audio
