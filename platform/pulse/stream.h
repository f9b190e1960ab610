#pragma once

#include <cstdint>
#include <memory>

#include "platform/pulse/connection.h"
#include "platform/pulse/endpoint.h"
#include "platform/sample_format.h"

namespace pulse_audio {

// What the streams of both directions have in common. A stream stays on its endpoint: when that goes, the stream fails
// with AUDCLNT_E_DEVICE_INVALIDATED. It ends with this object. All but the constructor and the destructor need the
// connection's lock.
class Stream {
 public:
  Stream(std::shared_ptr<Connection> connection, const platform::SampleFormat& format, UINT32 bufferFrames);
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  virtual ~Stream() { Close(); }

  // Sets the stream up on the server, halted. Its own volume is full, whatever the server remembers of earlier streams.
  HRESULT Open(const Endpoint& endpoint);

  UINT32 BufferFrames() const { return bufferFrames_; }
  bool IsRunning() const { return isRunning_; }
  // S_OK while the stream can be used.
  HRESULT Status() const;

  // As IAudioClient. Render: frames queued and not yet played. Capture: frames of the next packet, 0 when there is
  // none.
  virtual HRESULT Padding(UINT32* frames) = 0;
  virtual HRESULT Start() = 0;
  HRESULT Stop();

 protected:
  // Asks the server for a stream of the direction; negative for a request that can't be made.
  virtual int Connect(const Endpoint& endpoint) = 0;
  // What is left to do once the server has the stream.
  virtual HRESULT Settle() { return S_OK; }

  // Ends the stream: none of its callbacks comes any more.
  void Close();

  HRESULT Run(bool isRunning);
  HRESULT UpdateTiming(const pa_timing_info** timing);
  Connection& GetConnection() const { return *connection_; }
  pa_stream* Handle() const { return stream_; }
  bool IsGood() const { return PA_STREAM_IS_GOOD(pa_stream_get_state(stream_)); }
  std::uint32_t PacketBytes() const { return format_.rate / 100 * format_.FrameBytes(); }

  const platform::SampleFormat format_;
  const UINT32 bufferFrames_;

 private:
  HRESULT Create(const Endpoint& endpoint);
  HRESULT SetFullVolume(const Endpoint& endpoint);

  std::shared_ptr<Connection> connection_;
  pa_stream* stream_ = nullptr;
  bool isRunning_ = false;
};

}  // namespace pulse_audio
