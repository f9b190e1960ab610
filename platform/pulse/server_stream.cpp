#include "platform/pulse/server_stream.h"

namespace pulse_audio {

namespace {

pa_sample_format_t ServerFormat(const platform::SampleFormat& format) {
  if (format.isFloat) return PA_SAMPLE_FLOAT32LE;
  switch (format.bits) {
    case 8: return PA_SAMPLE_U8;
    case 16: return PA_SAMPLE_S16LE;
    case 24: return PA_SAMPLE_S24LE;
    default: return PA_SAMPLE_S32LE;
  }
}

void NoteStreamSuccess(pa_stream* stream, int success, void* error) noexcept {
  NoteSuccess(pa_stream_get_context(stream), success, error);
}

}  // namespace

ServerStream::~ServerStream() {
  if (stream_ == nullptr) return;
  const Connection::Lock lock(connection_);
  pa_stream_set_state_callback(stream_, nullptr, nullptr);
  pa_stream_set_read_callback(stream_, nullptr, nullptr);
  pa_stream_disconnect(stream_);
  pa_stream_unref(stream_);
}

HRESULT ServerStream::Open(const ServerEndpoint& endpoint, const std::function<int(pa_stream*)>& connect) {
  const HRESULT status = Create(endpoint);
  if (status != S_OK) return status;
  if (connect(stream_) < 0) return LastStatus();
  const auto isDecided = [this] { return pa_stream_get_state(stream_) != PA_STREAM_CREATING; };
  if (!connection_.WaitUntil(Connection::kAnswerTime, isDecided)) connection_.GiveUp();
  return IsGood() ? SetFullVolume(endpoint) : LastStatus();
}

HRESULT ServerStream::SetFullVolume(const ServerEndpoint& endpoint) {
  // This would be the endpoint's own volume, and that is the caller's to set.
  if (endpoint.hasFlatVolume) return S_OK;
  const bool isRender = endpoint.key.flow == eRender;
  const auto setVolume = isRender ? &pa_context_set_sink_input_volume : &pa_context_set_source_output_volume;
  const auto setMute = isRender ? &pa_context_set_sink_input_mute : &pa_context_set_source_output_mute;
  pa_context* const context = connection_.Context();
  const std::uint32_t index = pa_stream_get_index(stream_);
  pa_cvolume full;
  pa_cvolume_set(&full, format_.channels, PA_VOLUME_NORM);
  int error = PA_OK;
  const HRESULT status = connection_.Finish(setVolume(context, index, &full, &NoteSuccess, &error), error);
  if (status != S_OK) return status;
  return connection_.Finish(setMute(context, index, 0, &NoteSuccess, &error), error);
}

HRESULT ServerStream::Create(const ServerEndpoint& endpoint) {
  const pa_sample_spec spec{
      .format = ServerFormat(format_), .rate = format_.rate, .channels = static_cast<std::uint8_t>(format_.channels)};
  pa_channel_map map = endpoint.map;
  // The endpoint's own channels pass as they are.
  if (format_.channels != map.channels) pa_channel_map_init_extend(&map, spec.channels, PA_CHANNEL_MAP_WAVEEX);
  stream_ = pa_stream_new(connection_.Context(), "Audio test", &spec, &map);
  if (stream_ == nullptr) return LastStatus();
  pa_stream_set_state_callback(
      stream_, [](pa_stream*, void* connection) { static_cast<Connection*>(connection)->WakeUp(); }, &connection_);
  return S_OK;
}

HRESULT ServerStream::Status() const {
  return pa_stream_get_state(stream_) == PA_STREAM_READY ? S_OK : connection_.StatusOf(PA_ERR_KILLED);
}

HRESULT ServerStream::Run(bool isRunning) {
  const HRESULT status = Status();
  if (status != S_OK) return status;
  int error = PA_OK;
  return connection_.Finish(pa_stream_cork(stream_, isRunning ? 0 : 1, &NoteStreamSuccess, &error), error);
}

HRESULT ServerStream::UpdateTiming(const pa_timing_info** timing) {
  HRESULT status = Status();
  if (status != S_OK) return status;
  int error = PA_OK;
  status = connection_.Finish(pa_stream_update_timing_info(stream_, &NoteStreamSuccess, &error), error);
  if (status != S_OK) return status;
  *timing = pa_stream_get_timing_info(stream_);
  return *timing == nullptr ? E_FAIL : S_OK;
}

}  // namespace pulse_audio
