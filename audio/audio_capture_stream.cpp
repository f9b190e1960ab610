#include "audio/audio_capture_stream.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "audio/platform_call.h"

namespace audio {
namespace {

// As much of a wave format as the value holds, with 0 behind it. All of it is 0 if the endpoint lacks the property; the
// negotiation fails then.
CaptureFormatBlock FormatFrom(const PROPVARIANT& value) {
  CaptureFormatBlock format;
  if (value.vt != VT_BLOB || value.blob.pBlobData == nullptr) return format;
  std::memcpy(&format, value.blob.pBlobData, std::min<std::size_t>(sizeof format, value.blob.cbSize));
  return format;
}

// The device format of the system's default capture endpoint.
CaptureFormatBlock DefaultDeviceFormat(ComPtr<IMMDeviceEnumerator> enumerator) {
  ComPtr<IMMDevice> device;
  Require(enumerator->GetDefaultAudioEndpoint(eCapture, eMultimedia, device.Receive()), device);
  // Properties may come with any success status.
  ComPtr<IPropertyStore> properties;
  if (FAILED(device->OpenPropertyStore(STGM_READ, properties.Receive())) || !properties) throw kPlatformError;
  PROPVARIANT value;
  PropVariantInit(&value);
  if (FAILED(properties->GetValue(PKEY_AudioEngine_DeviceFormat, &value))) throw kPlatformError;
  const CaptureFormatBlock format = FormatFrom(value);
  enumerator.Reset();
  device.Reset();
  properties.Reset();
  // The format is copied by now, so it doesn't matter to the test whether this succeeds.
  PropVariantClear(&value);
  return format;
}

}  // namespace

AudioCaptureStreamClass::AudioCaptureStreamClass(std::u16string name) : AudioStreamClass(eCapture, std::move(name)) {}

void AudioCaptureStreamClass::Initialize() {
  RequireBufferDuration();
  NegotiateFormat();
  InitializeClient(0, format_.header);
  captureClient_ = RequireInterface<IAudioCaptureClient>(
      [this](REFIID interfaceId, void** service) { return client_->GetService(interfaceId, service); });
}

void AudioCaptureStreamClass::NegotiateFormat() {
  // The offer is the format of the system's default capture endpoint, whichever endpoint is bound.
  format_ = DefaultDeviceFormat(CreateEnumerator());

  WAVEFORMATEX* match = nullptr;
  const HRESULT status = client_->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, &format_.header, &match);
  const CoTaskMemory<WAVEFORMATEX> closest(match);
  if (status == S_OK) return;
  if (status != S_FALSE || !closest) throw kPlatformError;
  // A match replaces the header and the two bytes of the valid bits; the rest of the offer stays. A match that is a
  // header alone, as of plain PCM, has no valid bits, and gets 0. Those of the offer, which is another format, would
  // put the sign of the samples in the wrong place.
  constexpr std::size_t kValidBitsBytes = 2;
  format_.header = *closest;
  std::fill_n(format_.tail.begin(), kValidBitsBytes, std::uint8_t{0});
  std::memcpy(format_.tail.data(), closest.get() + 1, std::min<std::size_t>(kValidBitsBytes, closest->cbSize));
}

AudioCaptureStreamClass::Packet AudioCaptureStreamClass::ReadPacket() {
  BYTE* data = nullptr;
  UINT32 frames = 0;
  DWORD flags = 0;
  Require(captureClient_->GetBuffer(&data, &frames, &flags, nullptr, nullptr));
  return {data, frames};
}

void AudioCaptureStreamClass::ReleasePacket(std::uint32_t frames) { Require(captureClient_->ReleaseBuffer(frames)); }

std::uint32_t AudioCaptureStreamClass::GetNextPacketSize() const {
  UINT32 frames = 0;
  Require(captureClient_->GetNextPacketSize(&frames));
  return frames;
}

}  // namespace audio
