#include "platform/virtual/audio_client.h"

#include "platform/caller_memory.h"
#include "platform/com_ptr.h"
#include "platform/stream_request.h"
#include "platform/virtual/object.h"

namespace virtual_audio {

namespace {

// Keeps the client, and so the stream, alive as long as the service.
ComPtr<IAudioClient> Share(IAudioClient& client) {
  client.AddRef();
  return ComPtr<IAudioClient>(&client);
}

class RenderClient final : public Object<IAudioRenderClient> {
 public:
  RenderClient(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IAudioClient& client, RenderStream& stream)
      : Object(machine, &endpoint), client_(Share(client)), stream_(stream) {}

  HRESULT GetBuffer(UINT32 frames, BYTE** data) override {
    Empty(data);
    return Call("IAudioRenderClient::GetBuffer", {{"frames", frames}}, [&] { return stream_.GetBuffer(frames, data); });
  }

  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags) override {
    return Call("IAudioRenderClient::ReleaseBuffer", {{"frames", frames}, {"flags", flags}},
                [&] { return stream_.ReleaseBuffer(frames, flags, GetMachine()->Now()); });
  }

 private:
  ComPtr<IAudioClient> client_;
  RenderStream& stream_;
};

class CaptureClient final : public Object<IAudioCaptureClient> {
 public:
  CaptureClient(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IAudioClient& client,
                CaptureStream& stream)
      : Object(machine, &endpoint), client_(Share(client)), stream_(stream) {}

  HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* devicePosition,
                    UINT64* performanceCounter) override {
    Empty(data);
    return Call("IAudioCaptureClient::GetBuffer", {},
                [&] { return stream_.Packets().GetBuffer(data, frames, flags, devicePosition, performanceCounter); });
  }

  HRESULT ReleaseBuffer(UINT32 frames) override {
    return Call("IAudioCaptureClient::ReleaseBuffer", {{"frames", frames}},
                [&] { return stream_.Packets().ReleaseBuffer(frames); });
  }

  HRESULT GetNextPacketSize(UINT32* frames) override {
    return Call("IAudioCaptureClient::GetNextPacketSize", {}, [&]() -> HRESULT {
      if (frames == nullptr) return E_POINTER;
      *frames = stream_.Padding();
      return S_OK;
    });
  }

 private:
  ComPtr<IAudioClient> client_;
  CaptureStream& stream_;
};

class AudioClient final : public Object<IAudioClient> {
 public:
  AudioClient(const std::shared_ptr<Machine>& machine, Endpoint& endpoint) : Object(machine, &endpoint) {}

  HRESULT Initialize(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME bufferDuration,
                     REFERENCE_TIME periodicity, const WAVEFORMATEX* format, const GUID*) override {
    return Call("IAudioClient::Initialize",
                {{"shareMode", std::int64_t{shareMode}},
                 {"flags", flags},
                 {"bufferDuration", bufferDuration},
                 {"periodicity", periodicity}},
                [&]() -> HRESULT {
                  if (format == nullptr) return E_POINTER;
                  if (stream_ != nullptr) return AUDCLNT_E_ALREADY_INITIALIZED;
                  const HRESULT status = platform::CheckRequest(shareMode, flags, bufferDuration, periodicity);
                  if (status != S_OK) return status;
                  return MakeStream(flags, bufferDuration, SampleFormat::From(*format));
                });
  }

  HRESULT GetBufferSize(UINT32* frames) override {
    return CallOnStream("IAudioClient::GetBufferSize", [&]() -> HRESULT {
      if (frames == nullptr) return E_POINTER;
      *frames = stream_->BufferFrames();
      return S_OK;
    });
  }

  HRESULT GetCurrentPadding(UINT32* frames) override {
    return CallOnStream("IAudioClient::GetCurrentPadding", [&]() -> HRESULT {
      if (frames == nullptr) return E_POINTER;
      *frames = stream_->Padding();
      return S_OK;
    });
  }

  HRESULT IsFormatSupported(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format,
                            WAVEFORMATEX** closestMatch) override {
    Empty(closestMatch);
    return Call("IAudioClient::IsFormatSupported", {{"shareMode", std::int64_t{shareMode}}}, [&]() -> HRESULT {
      HRESULT status = platform::CheckFormatQuery(shareMode, format, closestMatch);
      if (status != S_OK) return status;
      status = GetEndpoint().Supports(SampleFormat::From(*format));
      if (status == S_FALSE) *closestMatch = platform::WaveFormatForCaller(*GetEndpoint().closest);
      return status;
    });
  }

  HRESULT Start() override {
    return CallOnStream("IAudioClient::Start", [&]() -> HRESULT {
      if (stream_->IsRunning()) return AUDCLNT_E_NOT_STOPPED;
      stream_->Start(GetMachine()->Now());
      return S_OK;
    });
  }

  HRESULT Stop() override {
    return CallOnStream("IAudioClient::Stop", [&]() -> HRESULT {
      if (!stream_->IsRunning()) return S_FALSE;
      stream_->Stop();
      return S_OK;
    });
  }

  HRESULT GetService(REFIID iid, void** service) override {
    Empty(service);
    return Call("IAudioClient::GetService", {{"interface", iid}}, [&]() -> HRESULT {
      if (service == nullptr) return E_POINTER;
      if (stream_ == nullptr) return AUDCLNT_E_NOT_INITIALIZED;
      if (iid == InterfaceId<IAudioRenderClient>()) {
        if (render_ == nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<RenderClient>(reinterpret_cast<IAudioRenderClient**>(service), GetMachine(), GetEndpoint(),
                                     *this, *render_);
      }
      if (iid == InterfaceId<IAudioCaptureClient>()) {
        if (capture_ == nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<CaptureClient>(reinterpret_cast<IAudioCaptureClient**>(service), GetMachine(), GetEndpoint(),
                                      *this, *capture_);
      }
      return E_NOINTERFACE;
    });
  }

 private:
  ~AudioClient() override {
    if (stream_ != nullptr) stream_->Stop();
  }

  template <class Body>
  HRESULT CallOnStream(Operation operation, Body body) {
    return Call(operation, {}, [&]() -> HRESULT { return stream_ == nullptr ? AUDCLNT_E_NOT_INITIALIZED : body(); });
  }

  HRESULT MakeStream(DWORD flags, REFERENCE_TIME duration, const std::optional<SampleFormat>& format) {
    const bool converts = (flags & AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM) != 0;
    if (!format || (!converts && GetEndpoint().Supports(format) != S_OK)) return AUDCLNT_E_UNSUPPORTED_FORMAT;
    UINT32 frames = 0;
    const HRESULT status = platform::BufferFrames(duration, format->rate, &frames);
    if (status != S_OK) return status;
    Endpoint& endpoint = GetEndpoint();
    if (endpoint.flow == eRender) {
      endpoint.renderStreams.push_back(std::make_shared<RenderStream>(*format, frames));
      render_ = endpoint.renderStreams.back();
      stream_ = render_.get();
    } else {
      const std::uint64_t seed = GetMachine()->NoiseSeed(endpoint);
      endpoint.captureStreams.push_back(std::make_shared<CaptureStream>(*format, frames, seed));
      capture_ = endpoint.captureStreams.back();
      stream_ = capture_.get();
    }
    return S_OK;
  }

  std::shared_ptr<RenderStream> render_;
  std::shared_ptr<CaptureStream> capture_;
  Stream* stream_ = nullptr;  // whichever of the two there is
};

}  // namespace

HRESULT NewAudioClient(const std::shared_ptr<Machine>& machine, Endpoint& endpoint, IAudioClient** client) {
  return HandOut<AudioClient>(client, machine, endpoint);
}

}  // namespace virtual_audio
