#include "host/listening/listener.h"

#include <fmt/core.h>

#include <cstdint>
#include <optional>
#include <stdexcept>

#include "host/endpoints/device_properties.h"
#include "host/endpoints/handed_out.h"
#include "platform/com_memory.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr REFERENCE_TIME kSecond = 10'000'000;

std::runtime_error Refusal(const std::string& reason) {
  return std::runtime_error("The endpoint can't be listened to along with the module: " + reason + ".");
}

void Require(HRESULT status, const char* operation) {
  if (SUCCEEDED(status)) return;
  throw Refusal(fmt::format("{} gave 0x{:08X}", operation, static_cast<std::uint32_t>(status)));
}

void AppendSamples(const BYTE* frames, UINT32 count, const platform::SampleFormat& format, Recording& recording) {
  for (std::size_t channel = 0; channel < recording.channels.size(); ++channel) {
    const BYTE* sample = frames + channel * format.SampleBytes();
    for (UINT32 frame = 0; frame < count; ++frame, sample += format.FrameBytes()) {
      recording.channels[channel].push_back(static_cast<float>(format.Read(sample)));
    }
  }
}

}  // namespace

Listener::Listener(const std::string& captureId) {
  ComPtr<IMMDeviceEnumerator> enumerator;
  Require(StatusWith(CoCreateInstance(core_audio::ObserverEnumeratorClass(), nullptr, CLSCTX_ALL,
                                      core_audio::InterfaceId<IMMDeviceEnumerator>(), enumerator.ReceiveAny()),
                     enumerator),
          "CoCreateInstance");
  const std::u16string text = text::ToUtf16(captureId);
  const std::basic_string<WCHAR> id(text.begin(), text.end());
  ComPtr<IMMDevice> device;
  Require(StatusWith(enumerator->GetDevice(id.c_str(), device.Receive()), device), "IMMDeviceEnumerator::GetDevice");
  Open(*device.Get());
}

void Listener::Open(IMMDevice& device) {
  std::optional<platform::SampleFormat> format = DeviceProperties(device).Format();
  if (!format.has_value()) throw Refusal("it names no format that is known");
  HRESULT status = S_OK;
  // The module's contract needs about a second with a tone, and three without.
  for (const REFERENCE_TIME duration : {10 * kSecond, 4 * kSecond, 2 * kSecond}) {
    // A client whose initialisation failed is of no further use.
    client_.Reset();
    Require(
        StatusWith(device.Activate(core_audio::InterfaceId<IAudioClient>(), CLSCTX_ALL, nullptr, client_.ReceiveAny()),
                   client_),
        "IMMDevice::Activate");
    WAVEFORMATEX* match = nullptr;
    WAVEFORMATEXTENSIBLE wanted = format->ToWaveFormat();
    status = client_->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, &wanted.Format, &match);
    const CoTaskMemory<WAVEFORMATEX> closest(match);
    Require(status, "IAudioClient::IsFormatSupported");
    if (status == S_FALSE && closest != nullptr) {
      format = platform::SampleFormat::From(*closest);
      if (!format.has_value()) throw Refusal("its format isn't known");
      wanted = format->ToWaveFormat();
    }
    status = client_->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, duration, 0, &wanted.Format, nullptr);
    if (SUCCEEDED(status)) break;
  }
  Require(status, "IAudioClient::Initialize");
  format_ = *format;
  Require(client_->GetBufferSize(&bufferFrames_), "IAudioClient::GetBufferSize");
  Require(
      StatusWith(client_->GetService(core_audio::InterfaceId<IAudioCaptureClient>(), service_.ReceiveAny()), service_),
      "IAudioClient::GetService");
  Require(client_->Start(), "IAudioClient::Start");
}

CapturedSound Listener::Drain(Kept kept) {
  Require(client_->Stop(), "IAudioClient::Stop");
  CapturedSound sound{.recording = {.rate = static_cast<double>(format_.rate), .channels = {}, .discontinuities = {}},
                      .format = format_,
                      .frames = {}};
  Recording& recording = sound.recording;
  recording.channels.resize(format_.channels);
  UINT32 packet = 0;
  for (;;) {
    Require(service_->GetNextPacketSize(&packet), "IAudioCaptureClient::GetNextPacketSize");
    if (packet == 0 || recording.Frames() > bufferFrames_) return sound;
    BYTE* data = nullptr;
    DWORD flags = 0;
    const HRESULT status = service_->GetBuffer(&data, &packet, &flags, nullptr, nullptr);
    Require(packet == 0 ? status : StatusWith(status, data), "IAudioCaptureClient::GetBuffer");
    // A stream's first packet has nothing before it to be lost.
    if ((flags & AUDCLNT_BUFFERFLAGS_DATA_DISCONTINUITY) != 0 && recording.Frames() > 0) {
      recording.discontinuities.push_back(recording.Frames());
    }
    const bool isSilent = (flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0;
    const std::size_t bytes = std::size_t{packet} * format_.FrameBytes();
    if (isSilent) {
      for (auto& channel : recording.channels) channel.resize(channel.size() + packet, 0.0F);
      if (kept == Kept::kFramesToo) sound.frames.append(bytes, static_cast<char>(format_.SilentByte()));
    } else {
      AppendSamples(data, packet, format_, recording);
      if (kept == Kept::kFramesToo) sound.frames.append(reinterpret_cast<const char*>(data), bytes);
    }
    Require(service_->ReleaseBuffer(packet), "IAudioCaptureClient::ReleaseBuffer");
  }
}

CapturedSound Listener::Finish(Kept kept) {
  CapturedSound sound = Drain(kept);
  service_.Reset();
  client_.Reset();
  return sound;
}

}  // namespace host
