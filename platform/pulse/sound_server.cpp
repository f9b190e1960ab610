#include "platform/pulse/sound_server.h"

#include <chrono>
#include <cmath>
#include <thread>
#include <utility>
#include <vector>

#include "platform/pulse/connection.h"
#include "platform/pulse/server_endpoint.h"
#include "platform/pulse/server_playback.h"
#include "platform/pulse/server_recording.h"

namespace pulse_audio {

namespace {

using platform::EndpointKey;
using platform::EndpointState;
using platform::SampleFormat;

class SoundServer final : public platform::Backend {
 public:
  explicit SoundServer(const std::string& server) : connection_(server) {}

  // The front holds the lock for as long as one operation takes.
  void lock() override {
    connection_.lock();
    connection_.BeginOperation();
  }
  void unlock() override { connection_.unlock(); }

  const char* Name() const override { return "pulse"; }

  HRESULT DescribeServer(std::optional<platform::ServerInfo>* info) override {
    Server server;
    const HRESULT status = GetServer(connection_, &server);
    *info = {server.name, server.version};
    return status;
  }

  HRESULT List(std::vector<EndpointState>* endpoints) override {
    std::vector<ServerEndpoint> found;
    const HRESULT status = ListEndpoints(connection_, &found);
    if (status == S_OK) endpoints->insert(endpoints->end(), found.begin(), found.end());
    return status;
  }

  HRESULT Find(const EndpointKey& key, EndpointState* endpoint) override {
    ServerEndpoint found;
    const HRESULT status = FindEndpoint(connection_, key, &found);
    if (status == S_OK) *endpoint = std::move(found);
    return status;
  }

  HRESULT SetLevel(const EndpointKey& key, UINT channel, float level) override {
    ServerEndpoint endpoint;
    const HRESULT status = FindEndpoint(connection_, key, &endpoint);
    if (status != S_OK) return status;
    const double wanted = std::round(double{level} * PA_VOLUME_NORM);
    // NaN fails both comparisons.
    const bool isLevel = wanted >= PA_VOLUME_MUTED && wanted <= PA_VOLUME_MAX;
    if (channel >= endpoint.levels.size() || !isLevel) return E_INVALIDARG;
    pa_cvolume volume = endpoint.volume;
    volume.values[channel] = static_cast<pa_volume_t>(wanted);
    const auto set = key.flow == eRender ? &pa_context_set_sink_volume_by_name : &pa_context_set_source_volume_by_name;
    int error = PA_OK;
    return connection_.Finish(set(connection_.Context(), key.name.c_str(), &volume, &NoteSuccess, &error), error);
  }

  HRESULT SetMute(const EndpointKey& key, bool muted) override {
    const auto set = key.flow == eRender ? &pa_context_set_sink_mute_by_name : &pa_context_set_source_mute_by_name;
    int error = PA_OK;
    return connection_.Finish(set(connection_.Context(), key.name.c_str(), muted ? 1 : 0, &NoteSuccess, &error), error);
  }

  // Without conversion a stream has the endpoint's own rate and channels. The server could mix and resample, but then
  // what is captured wouldn't be what the endpoint heard.
  HRESULT TakesFormat(const EndpointKey& key, const std::optional<SampleFormat>& wanted,
                      SampleFormat* closest) override {
    ServerEndpoint endpoint;
    const HRESULT status = FindEndpoint(connection_, key, &endpoint);
    if (status != S_OK) return status;
    const SampleFormat& own = endpoint.format;
    if (wanted && !wanted->isFloat && wanted->validBits == wanted->bits && wanted->channels == own.channels &&
        wanted->rate == own.rate) {
      return S_OK;
    }
    *closest = own;
    return S_FALSE;
  }

  HRESULT OpenPlayback(const EndpointKey& key, const SampleFormat& format, UINT32 bufferFrames,
                       std::shared_ptr<platform::Playback>* stream) override {
    if (std::uint64_t{bufferFrames} * format.FrameBytes() > ServerPlayback::kLargestBuffer) {
      return AUDCLNT_E_BUFFER_SIZE_ERROR;
    }
    return Open(key, std::make_shared<ServerPlayback>(connection_, format), stream, bufferFrames);
  }

  HRESULT OpenRecording(const EndpointKey& key, const SampleFormat& format,
                        std::shared_ptr<platform::PacketQueue> packets,
                        std::shared_ptr<platform::Recording>* stream) override {
    return Open(key, std::make_shared<ServerRecording>(connection_, format, std::move(packets)), stream);
  }

  void Sleep(DWORD milliseconds) override { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

 private:
  template <class Opened, class Stream, class... More>
  HRESULT Open(const EndpointKey& key, std::shared_ptr<Opened> opened, std::shared_ptr<Stream>* stream, More... more) {
    ServerEndpoint endpoint;
    HRESULT status = FindEndpoint(connection_, key, &endpoint);
    if (status == S_OK) status = opened->Open(endpoint, more...);
    if (status == S_OK) *stream = std::move(opened);
    return status;
  }

  Connection connection_;
};

}  // namespace

std::unique_ptr<platform::Backend> OpenSoundServer(const std::optional<std::string>& server) {
  // libpulse takes an empty text as a request to look by itself.
  if (server && server->empty()) throw platform::PlatformError("\"pulse:\" names no sound server.");
  return std::make_unique<SoundServer>(server.value_or(""));
}

}  // namespace pulse_audio
