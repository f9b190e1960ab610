#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "platform/core_audio.h"
#include "platform/render_area.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/stream.h"

namespace virtual_audio {

// The times of a run of frames: the first of them is frame number `frame` of `rate`, counted from `start`.
struct FrameGrid {
  Time start;
  std::int64_t frame;
  DWORD rate;
};

// The sound of one render stream: a queue of frames, and what was played of it, kept for as long as it can still be
// heard. The statuses are those that IAudioRenderClient and IAudioClient publish.
class RenderStream final : public Stream {
 public:
  RenderStream(const SampleFormat& format, UINT32 bufferFrames)
      : Stream(format, bufferFrames), area_(format.FrameBytes(), format.SilentByte()) {}

  UINT32 Padding() const override { return static_cast<UINT32>((queue_.size() - queueHead_) / format_.FrameBytes()); }
  void Start(Time now) override;
  void Stop() override;
  HRESULT GetBuffer(UINT32 frames, BYTE** data);
  HRESULT ReleaseBuffer(UINT32 frames, DWORD flags, Time now);

  // Plays the frames that are due at `now`. A frame puts out the sum over its channels of sample times gain.
  void Play(Time now, std::span<const double> gains);

  // Adds what sounded `delay` before each of the grid's frames to `mix`, a sample per frame, `gain` times as loud.
  // Between two frames it is interpolated; on a frame it is that frame, exactly.
  void AddTo(std::span<double> mix, const FrameGrid& grid, Time delay, double gain) const;

  // Drops what sounded before `time`. False when nothing is left that could be heard.
  bool ForgetBefore(Time time);

 private:
  // A stretch of playing without a gap.
  struct Passage {
    Time start;
    std::int64_t forgotten = 0;  // frames dropped from the front of `played`
    std::vector<double> played;  // what each frame put out
  };

  void Open(Time now);
  double QueuedOutput(std::size_t frame) const;
  double Output(const Passage& passage, std::int64_t frame) const;

  std::vector<BYTE> queue_;
  std::size_t queueHead_ = 0;  // bytes of `queue_` that have been played
  platform::RenderArea area_;
  bool isPlaying_ = false;  // the last passage goes on
  std::deque<Passage> passages_;
  std::vector<double> gains_;
};

}  // namespace virtual_audio
