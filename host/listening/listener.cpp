#include "host/listening/listener.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/com_memory.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr REFERENCE_TIME kSecond = 10'000'000;

std::string Refusal(const char* operation, HRESULT status) {
  return fmt::format("The endpoint can't be listened to along with the module: {} gave 0x{:08X}.", operation,
                     static_cast<std::uint32_t>(status));
}

// A wave format with its extension, in memory of its own. Empty when `bytes` are too few.
std::vector<BYTE> CopyOf(const BYTE* bytes, std::size_t size) {
  WAVEFORMATEX header;
  if (bytes == nullptr || size < sizeof header) return {};
  std::memcpy(&header, bytes, sizeof header);
  const std::size_t whole = sizeof header + header.cbSize;
  return size < whole ? std::vector<BYTE>() : std::vector<BYTE>(bytes, bytes + whole);
}

std::vector<BYTE> DeviceFormatOf(IMMDevice& device) {
  ComPtr<IPropertyStore> store;
  if (FAILED(device.OpenPropertyStore(STGM_READ, store.Receive()))) return {};
  PROPVARIANT value;
  PropVariantInit(&value);
  std::vector<BYTE> format;
  if (SUCCEEDED(store->GetValue(PKEY_AudioEngine_DeviceFormat, &value)) && value.vt == VT_BLOB) {
    format = CopyOf(value.blob.pBlobData, value.blob.cbSize);
  }
  PropVariantClear(&value);
  return format;
}

const WAVEFORMATEX* WaveFormat(const std::vector<BYTE>& bytes) {
  return reinterpret_cast<const WAVEFORMATEX*>(bytes.data());
}

// The samples of the channel with the largest peak. A mean over the channels could cancel what they carry.
std::vector<float> LoudestChannel(const std::vector<BYTE>& frames, const ListenerFormat& format) {
  std::vector<float> loudest, samples(frames.size() / format.FrameBytes());
  float largestPeak = -1.0F;
  for (std::size_t channel = 0; channel < format.channels; ++channel) {
    float peak = 0.0F;
    const BYTE* bytes = frames.data() + channel * format.sampleBytes;
    for (float& sample : samples) {
      sample = format.Read(bytes);
      peak = std::max(peak, std::abs(sample));
      bytes += format.FrameBytes();
    }
    if (peak <= largestPeak) continue;
    largestPeak = peak;
    loudest.swap(samples);
    samples.resize(loudest.size());
  }
  return loudest;
}

}  // namespace

Listener::Listener(const std::string& captureId) {
  ComPtr<IMMDeviceEnumerator> enumerator;
  HRESULT status = CoCreateInstance(core_audio::EnumeratorClass(), nullptr, CLSCTX_ALL,
                                    core_audio::InterfaceId<IMMDeviceEnumerator>(), enumerator.ReceiveAny());
  if (FAILED(status)) {
    trouble_ = Refusal("CoCreateInstance", status);
    return;
  }
  const std::u16string text = text::ToUtf16(captureId);
  const std::basic_string<WCHAR> id(text.begin(), text.end());
  ComPtr<IMMDevice> device;
  status = enumerator->GetDevice(id.c_str(), device.Receive());
  trouble_ = FAILED(status) ? Refusal("IMMDeviceEnumerator::GetDevice", status) : Open(*device.Get());
  if (trouble_.empty()) return;
  service_.Reset();
  client_.Reset();
}

std::string Listener::Open(IMMDevice& device) {
  std::vector<BYTE> wanted = DeviceFormatOf(device);
  if (wanted.empty()) return "The endpoint can't be listened to along with the module: it names no format.";
  HRESULT status = S_OK;
  // The module's contract needs about a second with a tone, and three without.
  for (const REFERENCE_TIME duration : {10 * kSecond, 4 * kSecond, 2 * kSecond}) {
    // A client whose initialisation failed is of no further use.
    client_.Reset();
    status = device.Activate(core_audio::InterfaceId<IAudioClient>(), CLSCTX_ALL, nullptr, client_.ReceiveAny());
    if (FAILED(status)) return Refusal("IMMDevice::Activate", status);
    WAVEFORMATEX* match = nullptr;
    status = client_->IsFormatSupported(AUDCLNT_SHAREMODE_SHARED, WaveFormat(wanted), &match);
    const CoTaskMemory<WAVEFORMATEX> closest(match);
    if (FAILED(status)) return Refusal("IAudioClient::IsFormatSupported", status);
    if (status == S_FALSE && closest != nullptr) {
      wanted = CopyOf(reinterpret_cast<const BYTE*>(closest.get()), sizeof *closest + closest->cbSize);
    }
    status = client_->Initialize(AUDCLNT_SHAREMODE_SHARED, 0, duration, 0, WaveFormat(wanted), nullptr);
    if (SUCCEEDED(status)) break;
  }
  if (FAILED(status)) return Refusal("IAudioClient::Initialize", status);
  const std::optional<ListenerFormat> format = ListenerFormat::From(wanted);
  if (!format.has_value()) return "The endpoint can't be listened to along with the module: its format isn't known.";
  format_ = *format;
  if (FAILED(status = client_->GetBufferSize(&bufferFrames_))) return Refusal("IAudioClient::GetBufferSize", status);
  status = client_->GetService(core_audio::InterfaceId<IAudioCaptureClient>(), service_.ReceiveAny());
  if (FAILED(status)) return Refusal("IAudioClient::GetService", status);
  status = client_->Start();
  return FAILED(status) ? Refusal("IAudioClient::Start", status) : "";
}

std::string Listener::Drain(std::vector<BYTE>& frames) {
  HRESULT status = client_->Stop();
  if (FAILED(status)) return Refusal("IAudioClient::Stop", status);
  const std::size_t most = bufferFrames_ * format_.FrameBytes();
  UINT32 packet = 0;
  while (SUCCEEDED(status = service_->GetNextPacketSize(&packet)) && packet > 0 && frames.size() <= most) {
    BYTE* data = nullptr;
    DWORD flags = 0;
    status = service_->GetBuffer(&data, &packet, &flags, nullptr, nullptr);
    if (FAILED(status)) return Refusal("IAudioCaptureClient::GetBuffer", status);
    const std::size_t bytes = packet * format_.FrameBytes();
    if ((flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0) {
      frames.resize(frames.size() + bytes, format_.sampleBytes == 1 ? BYTE{128} : BYTE{0});
    } else {
      frames.insert(frames.end(), data, data + bytes);
    }
    status = service_->ReleaseBuffer(packet);
    if (FAILED(status)) return Refusal("IAudioCaptureClient::ReleaseBuffer", status);
  }
  return FAILED(status) ? Refusal("IAudioCaptureClient::GetNextPacketSize", status) : "";
}

std::variant<Heard, std::string> Listener::Finish() {
  if (!trouble_.empty()) return trouble_;
  std::vector<BYTE> frames;
  const std::string trouble = Drain(frames);
  service_.Reset();
  client_.Reset();
  if (!trouble.empty()) return trouble;
  const std::optional<Heard> heard = Analyse(LoudestChannel(frames, format_), format_.rate);
  if (heard.has_value()) return *heard;
  return fmt::format("Too little was heard to draw it: {} frames.", frames.size() / format_.FrameBytes());
}

}  // namespace host
