#include "platform/pulse/audio_client.h"

#include <optional>
#include <utility>

#include "platform/caller_memory.h"
#include "platform/com_ptr.h"
#include "platform/pulse/capture_stream.h"
#include "platform/pulse/object.h"
#include "platform/pulse/render_stream.h"
#include "platform/stream_request.h"

namespace pulse_audio {

namespace {

using platform::SampleFormat;

// Keeps the client, and so the stream, alive as long as the service.
ComPtr<IAudioClient> Share(IAudioClient& client) {
  client.AddRef();
  return ComPtr<IAudioClient>(&client);
}

// Without conversion a stream has the endpoint's own rate and channels. The server could mix and resample, but then
// what is captured wouldn't be what the endpoint heard.
bool IsTakenAsItIs(const std::optional<SampleFormat>& format, const SampleFormat& device) {
  return format && !format->isFloat && format->validBits == format->bits && format->channels == device.channels &&
         format->rate == device.rate;
}

class RenderClient final : public Object<IAudioRenderClient> {
 public:
  RenderClient(const std::shared_ptr<Connection>& connection, IAudioClient& client, RenderStream& stream)
      : Object(connection), client_(Share(client)), stream_(stream) {}

  HRESULT GetBuffer(UINT32 frames, BYTE** data) override {
    Empty(data);
    return Call([&] { return stream_.GetBuffer(frames, data); });
  }

  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags) override {
    return Call([&] { return stream_.ReleaseBuffer(frames, flags); });
  }

 private:
  ComPtr<IAudioClient> client_;
  RenderStream& stream_;
};

class CaptureClient final : public Object<IAudioCaptureClient> {
 public:
  CaptureClient(const std::shared_ptr<Connection>& connection, IAudioClient& client, CaptureStream& stream)
      : Object(connection), client_(Share(client)), stream_(stream) {}

  HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* devicePosition,
                    UINT64* performanceCounter) override {
    Empty(data);
    return Call([&] {
      const HRESULT status = stream_.Status();
      if (status != S_OK) return status;
      return stream_.Packets().GetBuffer(data, frames, flags, devicePosition, performanceCounter);
    });
  }

  HRESULT ReleaseBuffer(UINT32 frames) override {
    return Call([&] { return stream_.Packets().ReleaseBuffer(frames); });
  }

  HRESULT GetNextPacketSize(UINT32* frames) override {
    return Call([&] { return frames == nullptr ? E_POINTER : stream_.Padding(frames); });
  }

 private:
  ComPtr<IAudioClient> client_;
  CaptureStream& stream_;
};

class AudioClient final : public Object<IAudioClient> {
 public:
  AudioClient(const std::shared_ptr<Connection>& connection, EndpointName endpoint)
      : Object(connection), endpoint_(std::move(endpoint)) {}

  HRESULT Initialize(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME bufferDuration,
                     REFERENCE_TIME periodicity, const WAVEFORMATEX* format, const GUID*) override {
    return Call([&]() -> HRESULT {
      if (format == nullptr) return E_POINTER;
      if (stream_ != nullptr) return AUDCLNT_E_ALREADY_INITIALIZED;
      const HRESULT status = platform::CheckRequest(shareMode, flags, bufferDuration, periodicity);
      if (status != S_OK) return status;
      return MakeStream((flags & AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM) != 0, bufferDuration, SampleFormat::From(*format));
    });
  }

  HRESULT GetBufferSize(UINT32* frames) override {
    return CallOnStream([&]() -> HRESULT {
      if (frames == nullptr) return E_POINTER;
      *frames = stream_->BufferFrames();
      return S_OK;
    });
  }

  HRESULT GetCurrentPadding(UINT32* frames) override {
    return CallOnStream([&] { return frames == nullptr ? E_POINTER : stream_->Padding(frames); });
  }

  HRESULT IsFormatSupported(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format,
                            WAVEFORMATEX** closestMatch) override {
    Empty(closestMatch);
    return Call([&]() -> HRESULT {
      HRESULT status = platform::CheckFormatQuery(shareMode, format, closestMatch);
      if (status != S_OK) return status;
      Endpoint endpoint;
      status = FindEndpoint(*GetConnection(), endpoint_, &endpoint);
      if (status != S_OK) return status;
      if (IsTakenAsItIs(SampleFormat::From(*format), endpoint.format)) return S_OK;
      *closestMatch = platform::WaveFormatForCaller(endpoint.format);
      return S_FALSE;
    });
  }

  HRESULT Start() override {
    return CallOnStream([&] { return stream_->IsRunning() ? AUDCLNT_E_NOT_STOPPED : stream_->Start(); });
  }

  HRESULT Stop() override {
    return CallOnStream([&] { return stream_->Stop(); });
  }

  HRESULT GetService(REFIID iid, void** service) override {
    Empty(service);
    return Call([&]() -> HRESULT {
      if (service == nullptr) return E_POINTER;
      if (stream_ == nullptr) return AUDCLNT_E_NOT_INITIALIZED;
      if (iid == InterfaceId<IAudioRenderClient>()) {
        if (render_ == nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<RenderClient>(reinterpret_cast<IAudioRenderClient**>(service), GetConnection(), *this, *render_);
      }
      if (iid == InterfaceId<IAudioCaptureClient>()) {
        if (capture_ == nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<CaptureClient>(reinterpret_cast<IAudioCaptureClient**>(service), GetConnection(), *this,
                                      *capture_);
      }
      return E_NOINTERFACE;
    });
  }

 private:
  template <class Body>
  HRESULT CallOnStream(Body body) {
    return Call([&]() -> HRESULT { return stream_ == nullptr ? AUDCLNT_E_NOT_INITIALIZED : body(); });
  }

  HRESULT MakeStream(bool converts, REFERENCE_TIME duration, const std::optional<SampleFormat>& format) {
    Endpoint endpoint;
    HRESULT status = FindEndpoint(*GetConnection(), endpoint_, &endpoint);
    if (status != S_OK) return status;
    if (!format || (!converts && !IsTakenAsItIs(format, endpoint.format))) return AUDCLNT_E_UNSUPPORTED_FORMAT;
    UINT32 frames = 0;
    status = platform::BufferFrames(duration, format->rate, &frames);
    if (status != S_OK) return status;
    if (endpoint_.flow == eRender) {
      if (std::uint64_t{frames} * format->FrameBytes() > RenderStream::kLargestBuffer)
        return AUDCLNT_E_BUFFER_SIZE_ERROR;
      return Open(render_, endpoint, *format, frames);
    }
    return Open(capture_, endpoint, *format, frames);
  }

  template <class Direction>
  HRESULT Open(std::unique_ptr<Direction>& place, const Endpoint& endpoint, const SampleFormat& format, UINT32 frames) {
    auto stream = std::make_unique<Direction>(GetConnection(), format, frames);
    const HRESULT status = stream->Open(endpoint);
    if (status != S_OK) return status;
    place = std::move(stream);
    stream_ = place.get();
    return S_OK;
  }

  const EndpointName endpoint_;
  std::unique_ptr<RenderStream> render_;
  std::unique_ptr<CaptureStream> capture_;
  Stream* stream_ = nullptr;  // whichever of the two there is
};

}  // namespace

HRESULT NewAudioClient(const std::shared_ptr<Connection>& connection, const EndpointName& endpoint,
                       IAudioClient** client) {
  return HandOut<AudioClient>(client, connection, endpoint);
}

}  // namespace pulse_audio
