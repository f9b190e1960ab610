#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/sample_format.h"
#include "platform/virtual/clock.h"

namespace virtual_audio {

// The times of a run of frames: the first of them is frame number `frame` of `rate`, counted from `start`.
struct FrameGrid {
  Time start;
  std::int64_t frame;
  DWORD rate;
};

// The sound of one render stream: a queue of frames, and what was played of it, kept for as long as it can still be
// heard.
class MachinePlayback final : public platform::Playback {
 public:
  // `now` refers to the machine's time, which stands still during an operation.
  MachinePlayback(const platform::SampleFormat& format, const Time& now) : format_(format), now_(now) {}

  const platform::SampleFormat& Format() const { return format_; }
  // When it played its first frame.
  Time Began() const { return began_; }

  HRESULT Start() override;
  HRESULT Stop() override;
  HRESULT Padding(UINT32* frames) override;
  HRESULT Write(std::span<const BYTE> frames) override;

  // Plays the frames that are due now. A frame puts out the sum over its channels of sample times gain.
  void Play(std::span<const double> gains);

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

  void BeginPassage();
  std::size_t QueuedFrames() const { return (queue_.size() - queueHead_) / format_.FrameBytes(); }
  double QueuedOutput(std::size_t frame) const;
  double Output(const Passage& passage, std::int64_t frame) const;

  const platform::SampleFormat format_;
  const Time& now_;
  std::vector<BYTE> queue_;
  std::size_t queueHead_ = 0;  // bytes of `queue_` that have been played
  bool isPlaying_ = false;     // the last passage goes on
  std::deque<Passage> passages_;
  Time began_ = kNever;
  std::vector<double> gains_;
};

}  // namespace virtual_audio
