#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "platform/com_ptr.h"
#include "platform/front/caller_memory.h"
#include "platform/front/object.h"
#include "platform/front/objects.h"
#include "platform/front/render_buffer.h"

namespace platform {

namespace {

constexpr REFERENCE_TIME kUnitsPerSecond = 10'000'000;
// Two packets; a shorter duration is raised to it.
constexpr REFERENCE_TIME kShortestBuffer = kUnitsPerSecond / 50;
constexpr REFERENCE_TIME kLongestBuffer = 3600 * kUnitsPerSecond;

HRESULT CheckRequest(AUDCLNT_SHAREMODE shareMode, DWORD flags, REFERENCE_TIME duration, REFERENCE_TIME periodicity) {
  constexpr DWORD kKnownFlags = AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM | AUDCLNT_STREAMFLAGS_SRC_DEFAULT_QUALITY;
  if (shareMode == AUDCLNT_SHAREMODE_EXCLUSIVE) return AUDCLNT_E_EXCLUSIVE_MODE_NOT_ALLOWED;
  if (shareMode != AUDCLNT_SHAREMODE_SHARED || periodicity != 0) return E_INVALIDARG;
  return (flags & ~kKnownFlags) != 0 || duration < 0 ? E_INVALIDARG : S_OK;
}

UINT32 FramesOf(REFERENCE_TIME duration, DWORD rate) {
  return static_cast<UINT32>((duration * rate + kUnitsPerSecond - 1) / kUnitsPerSecond);
}

// The two ends of a capture stream.
struct Capture {
  std::shared_ptr<PacketQueue> packets;
  std::shared_ptr<Recording> recording;

  HRESULT NextPacketFrames(UINT32* frames) const {
    const HRESULT status = recording->Status();
    if (status == S_OK) *frames = packets->NextPacketFrames();
    return status;
  }
};

// Keeps the client, and so the stream, alive as long as the service.
ComPtr<IAudioClient> Share(IAudioClient& client) {
  client.AddRef();
  return ComPtr<IAudioClient>(&client);
}

class RenderClient final : public Object<IAudioRenderClient> {
 public:
  RenderClient(const Context& context, IAudioClient& client, RenderBuffer& buffer)
      : Object(context), client_(Share(client)), buffer_(buffer) {}

  HRESULT GetBuffer(UINT32 frames, BYTE** data) override {
    Empty(data);
    return Call("IAudioRenderClient::GetBuffer", {{"frames", frames}}, [&] { return buffer_.GetBuffer(frames, data); });
  }

  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags) override {
    return Call("IAudioRenderClient::ReleaseBuffer", {{"frames", frames}, {"flags", flags}},
                [&] { return buffer_.ReleaseBuffer(frames, flags); });
  }

 private:
  const ComPtr<IAudioClient> client_;
  RenderBuffer& buffer_;
};

class CaptureClient final : public Object<IAudioCaptureClient> {
 public:
  CaptureClient(const Context& context, IAudioClient& client, const Capture& capture)
      : Object(context), client_(Share(client)), capture_(capture) {}

  HRESULT GetBuffer(BYTE** data, UINT32* frames, DWORD* flags, UINT64* devicePosition,
                    UINT64* performanceCounter) override {
    Empty(data);
    return Call("IAudioCaptureClient::GetBuffer", {}, [&] {
      const HRESULT status = capture_.recording->Status();
      if (status != S_OK) return status;
      return capture_.packets->GetBuffer(data, frames, flags, devicePosition, performanceCounter);
    });
  }

  HRESULT ReleaseBuffer(UINT32 frames) override {
    return Call("IAudioCaptureClient::ReleaseBuffer", {{"frames", frames}},
                [&] { return capture_.packets->ReleaseBuffer(frames); });
  }

  HRESULT GetNextPacketSize(UINT32* frames) override {
    return Call("IAudioCaptureClient::GetNextPacketSize", {},
                [&] { return frames == nullptr ? E_POINTER : capture_.NextPacketFrames(frames); });
  }

 private:
  const ComPtr<IAudioClient> client_;
  const Capture& capture_;
};

class Client final : public Object<IAudioClient> {
 public:
  explicit Client(const Context& context) : Object(context) {}

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
                  const HRESULT status = CheckRequest(shareMode, flags, bufferDuration, periodicity);
                  if (status != S_OK) return status;
                  return OpenStream(flags, bufferDuration, SampleFormat::From(*format));
                });
  }

  HRESULT GetBufferSize(UINT32* frames) override {
    return CallOnStream("IAudioClient::GetBufferSize", [&] { return Give(frames, bufferFrames_); });
  }

  HRESULT GetCurrentPadding(UINT32* frames) override {
    return CallOnStream("IAudioClient::GetCurrentPadding", [&]() -> HRESULT {
      if (frames == nullptr) return E_POINTER;
      return playback_ != nullptr ? playback_->Padding(frames) : capture_.NextPacketFrames(frames);
    });
  }

  HRESULT IsFormatSupported(AUDCLNT_SHAREMODE shareMode, const WAVEFORMATEX* format,
                            WAVEFORMATEX** closestMatch) override {
    Empty(closestMatch);
    return Call("IAudioClient::IsFormatSupported", {{"shareMode", std::int64_t{shareMode}}}, [&]() -> HRESULT {
      if (format == nullptr) return E_POINTER;
      if (shareMode == AUDCLNT_SHAREMODE_EXCLUSIVE) return AUDCLNT_E_UNSUPPORTED_FORMAT;
      if (shareMode != AUDCLNT_SHAREMODE_SHARED) return E_INVALIDARG;
      if (closestMatch == nullptr) return E_POINTER;
      SampleFormat closest;
      const HRESULT status = GetBackend().TakesFormat(Key(), SampleFormat::From(*format), &closest);
      if (status == S_FALSE) *closestMatch = FormatForCaller(closest);
      return status;
    });
  }

  HRESULT Start() override {
    return CallOnStream("IAudioClient::Start",
                        [&] { return stream_->IsRunning() ? AUDCLNT_E_NOT_STOPPED : stream_->Start(); });
  }

  HRESULT Stop() override {
    return CallOnStream("IAudioClient::Stop", [&] { return stream_->IsRunning() ? stream_->Stop() : S_FALSE; });
  }

  HRESULT GetService(REFIID iid, void** service) override {
    Empty(service);
    return Call("IAudioClient::GetService", {{"interface", iid}}, [&]() -> HRESULT {
      if (service == nullptr) return E_POINTER;
      if (stream_ == nullptr) return AUDCLNT_E_NOT_INITIALIZED;
      if (iid == InterfaceId<IAudioRenderClient>()) {
        if (playback_ == nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<RenderClient>(reinterpret_cast<IAudioRenderClient**>(service), GetContext(), *this, *render_);
      }
      if (iid == InterfaceId<IAudioCaptureClient>()) {
        if (playback_ != nullptr) return AUDCLNT_E_WRONG_ENDPOINT_TYPE;
        return HandOut<CaptureClient>(reinterpret_cast<IAudioCaptureClient**>(service), GetContext(), *this, capture_);
      }
      return E_NOINTERFACE;
    });
  }

 private:
  template <class Body>
  HRESULT CallOnStream(Operation operation, Body body) {
    return Call(operation, {}, [&]() -> HRESULT { return stream_ == nullptr ? AUDCLNT_E_NOT_INITIALIZED : body(); });
  }

  HRESULT OpenStream(DWORD flags, REFERENCE_TIME duration, const std::optional<SampleFormat>& format) {
    SampleFormat closest;
    const HRESULT taken = GetBackend().TakesFormat(Key(), format, &closest);
    if (FAILED(taken) && taken != AUDCLNT_E_UNSUPPORTED_FORMAT) return taken;
    const bool converts = (flags & AUDCLNT_STREAMFLAGS_AUTOCONVERTPCM) != 0;
    if (!format || (taken != S_OK && !converts)) return AUDCLNT_E_UNSUPPORTED_FORMAT;
    if (duration > kLongestBuffer) return E_OUTOFMEMORY;
    bufferFrames_ = FramesOf(std::max(duration, kShortestBuffer), format->rate);
    return Key().flow == eRender ? OpenRender(*format) : OpenCapture(*format);
  }

  HRESULT OpenRender(const SampleFormat& format) {
    std::shared_ptr<Playback> playback;
    const HRESULT status = GetBackend().OpenPlayback(Key(), format, bufferFrames_, &playback);
    if (status != S_OK) return status;
    render_ = std::make_unique<RenderBuffer>(format, bufferFrames_, playback);
    playback_ = std::move(playback);
    stream_ = playback_.get();
    return S_OK;
  }

  HRESULT OpenCapture(const SampleFormat& format) {
    Capture capture{.packets = std::make_shared<PacketQueue>(format, bufferFrames_), .recording = nullptr};
    const HRESULT status = GetBackend().OpenRecording(Key(), format, capture.packets, &capture.recording);
    if (status != S_OK) return status;
    capture_ = std::move(capture);
    stream_ = capture_.recording.get();
    return S_OK;
  }

  UINT32 bufferFrames_ = 0;
  std::shared_ptr<Playback> playback_;  // null for a capture stream
  std::unique_ptr<RenderBuffer> render_;
  Capture capture_;
  Stream* stream_ = nullptr;  // of either direction; null before Initialize
};

}  // namespace

HRESULT NewClient(const Context& context, IAudioClient** client) { return HandOut<Client>(client, context); }

}  // namespace platform
