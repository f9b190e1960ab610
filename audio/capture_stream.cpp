#include "audio/capture_stream.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "audio/platform_call.h"

namespace audio {
namespace {

// The property with the device format of the system's default capture endpoint; the caller clears it.
PROPVARIANT DefaultDeviceFormat(ComPtr<IMMDeviceEnumerator> enumerator) {
  ComPtr<IMMDevice> device;
  Require(enumerator->GetDefaultAudioEndpoint(eCapture, eMultimedia, device.Receive()), device);
  // Properties may come with any success status.
  ComPtr<IPropertyStore> properties;
  if (FAILED(device->OpenPropertyStore(STGM_READ, properties.Receive())) || !properties) throw kPlatformError;
  PROPVARIANT value;
  PropVariantInit(&value);
  if (FAILED(properties->GetValue(PKEY_AudioEngine_DeviceFormat, &value))) throw kPlatformError;
  return value;
}

// As much of the wave format as the value holds: none when the endpoint lacks the property. The rest stays 0.
CaptureFormatBlock FormatFrom(const PROPVARIANT& value) {
  CaptureFormatBlock format;
  if (value.vt != VT_BLOB || value.blob.pBlobData == nullptr) return format;
  const std::size_t held = std::min<std::size_t>(format.bytes.size(), value.blob.cbSize);
  std::memcpy(format.bytes.data(), value.blob.pBlobData, held);
  return format;
}

}  // namespace

AudioCaptureStreamClass::AudioCaptureStreamClass(std::u16string name) : AudioStreamClass(eCapture, std::move(name)) {}

void AudioCaptureStreamClass::Initialize() {
  RequireBufferDuration();
  NegotiateFormat();
  InitializeClient(0, WaveFormat(format_));
  captureClient_ = RequireInterface<IAudioCaptureClient>(
      [this](REFIID interfaceId, void** service) { return client_->GetService(interfaceId, service); });
}

void AudioCaptureStreamClass::NegotiateFormat() {
  // The offer is the format of the system's default capture endpoint, whichever endpoint is bound.
  PROPVARIANT value = DefaultDeviceFormat(CreateEnumerator());
  format_ = FormatFrom(value);
  PropVariantClear(&value);

  WAVEFORMATEX* match = nullptr;
  const HRESULT status = client_->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, WaveFormat(format_), &match);
  const CoTaskMemory<WAVEFORMATEX> closest(match);
  if (status == S_OK) return;
  if (status != S_FALSE || !closest) throw kPlatformError;
  // A match replaces the first 20 bytes of the offer. One that holds no more than 18 has no valid bits; those of the
  // offer, which is another format, would put the sign of its samples in the wrong place.
  constexpr std::size_t kReplaced = 20;
  const std::size_t held = sizeof(WAVEFORMATEX) + closest->cbSize;
  std::fill_n(format_.bytes.begin(), kReplaced, std::uint8_t{0});
  std::memcpy(format_.bytes.data(), closest.get(), std::min(kReplaced, held));
}

AudioCaptureStreamClass::Packet AudioCaptureStreamClass::ReadPacket() {
  BYTE* data = nullptr;
  UINT32 frames = 0;
  DWORD flags = 0;
  Require(captureClient_->GetBuffer(&data, &frames, &flags, nullptr, nullptr));
  return {data, frames};
}

void AudioCaptureStreamClass::ReleasePacket(std::uint32_t frames) {
  Require(captureClient_->ReleaseBuffer(frames));
}

std::uint32_t AudioCaptureStreamClass::GetNextPacketSize() const {
  UINT32 frames = 0;
  Require(captureClient_->GetNextPacketSize(&frames));
  return frames;
}

}  // namespace audio
