#include "platform/virtual/machine_playback.h"

#include <algorithm>

namespace virtual_audio {

namespace {

// Frames on either side of a place that interpolation, or rounding of a time, can reach.
constexpr std::int64_t kReach = 4;

// A place in a passage that moves in steps of another rate. It is kept as a whole frame and a count of parts of
// 1 / (kSecond * stepRate) of a frame, so nothing is rounded: with equal rates and an offset of whole frames it never
// falls between two frames.
class Place {
 public:
  Place(Time offset, std::int64_t step, std::int64_t stepRate, std::int64_t rate)
      : parts_(kSecond * stepRate), stepFrames_(rate / stepRate), stepParts_(rate % stepRate * kSecond) {
    const Time seconds = FloorDivide(offset, kSecond);
    const Time rest = offset - seconds * kSecond;
    frame_ = seconds * rate + rest * rate / kSecond + step * rate / stepRate;
    part_ = rest * rate % kSecond * stepRate + step * rate % stepRate * kSecond;
    Carry();
  }

  std::int64_t Frame() const { return frame_; }
  double Fraction() const { return static_cast<double>(part_) / static_cast<double>(parts_); }

  void Step() {
    frame_ += stepFrames_;
    part_ += stepParts_;
    Carry();
  }

 private:
  void Carry() {
    if (part_ < parts_) return;
    part_ -= parts_;
    ++frame_;
  }

  std::int64_t parts_, stepFrames_, stepParts_;
  std::int64_t frame_, part_;
};

// The Catmull-Rom cubic through four equally spaced samples, at `x` from 0 to 1 between the middle two.
double Interpolate(double before, double from, double to, double after, double x) {
  const double linear = to - before;
  const double square = 2 * before - 5 * from + 4 * to - after;
  const double cube = 3 * (from - to) + after - before;
  return from + 0.5 * x * (linear + x * (square + x * cube));
}

}  // namespace

HRESULT MachinePlayback::Start() {
  if (QueuedFrames() != 0) BeginPassage();
  isRunning_ = true;
  return S_OK;
}

HRESULT MachinePlayback::Stop() {
  isRunning_ = isPlaying_ = false;
  return S_OK;
}

HRESULT MachinePlayback::Padding(UINT32* frames) {
  *frames = static_cast<UINT32>(QueuedFrames());
  return S_OK;
}

HRESULT MachinePlayback::Write(std::span<const BYTE> frames) {
  queue_.insert(queue_.end(), frames.begin(), frames.end());
  if (isRunning_ && !isPlaying_) BeginPassage();
  return S_OK;
}

void MachinePlayback::BeginPassage() {
  passages_.push_back({.start = now_, .played = {}});
  began_ = std::min(began_, now_);
  isPlaying_ = true;
}

void MachinePlayback::Play(std::span<const double> gains) {
  gains_.assign(gains.begin(), gains.end());
  if (!isPlaying_) return;
  Passage& passage = passages_.back();
  const std::int64_t before = passage.forgotten + static_cast<std::int64_t>(passage.played.size());
  const std::int64_t due = FramesIn(now_ - passage.start, format_.rate) - before;
  const auto queued = static_cast<std::int64_t>(QueuedFrames());
  const auto frames = static_cast<std::size_t>(std::min(due, queued));
  for (std::size_t frame = 0; frame < frames; ++frame) passage.played.push_back(QueuedOutput(frame));
  queueHead_ += frames * format_.FrameBytes();
  // A queue that ran dry is silent until more is released: what comes then begins at its own time.
  if (due > queued) isPlaying_ = false;
  if (queueHead_ < queue_.size() / 2) return;
  queue_.erase(queue_.begin(), queue_.begin() + static_cast<std::ptrdiff_t>(queueHead_));
  queueHead_ = 0;
}

double MachinePlayback::QueuedOutput(std::size_t frame) const {
  const BYTE* sample = queue_.data() + queueHead_ + frame * format_.FrameBytes();
  double output = 0.0;
  for (const double gain : gains_) {
    output += gain * format_.Read(sample);
    sample += format_.SampleBytes();
  }
  return output;
}

double MachinePlayback::Output(const Passage& passage, std::int64_t frame) const {
  if (frame < passage.forgotten) return 0.0;
  const auto index = static_cast<std::size_t>(frame - passage.forgotten);
  if (index < passage.played.size()) return passage.played[index];
  // The curve at the last frames that sounded already bends towards the next in the queue.
  const std::size_t ahead = index - passage.played.size();
  return isPlaying_ && &passage == &passages_.back() && ahead < QueuedFrames() ? QueuedOutput(ahead) : 0.0;
}

void MachinePlayback::AddTo(std::span<double> mix, const FrameGrid& grid, Time delay, double gain) const {
  for (const Passage& passage : passages_) {
    Place place(grid.start - delay - passage.start, grid.frame, grid.rate, format_.rate);
    const auto length = static_cast<std::int64_t>(mix.size()) * format_.rate / grid.rate;
    const auto end = passage.forgotten + static_cast<std::int64_t>(passage.played.size());
    if (place.Frame() > end + kReach || place.Frame() + length < -kReach) continue;
    for (double& sample : mix) {
      const std::int64_t frame = place.Frame();
      sample += gain * Interpolate(Output(passage, frame - 1), Output(passage, frame), Output(passage, frame + 1),
                                   Output(passage, frame + 2), place.Fraction());
      place.Step();
    }
  }
}

bool MachinePlayback::ForgetBefore(Time time) {
  while (!passages_.empty()) {
    Passage& passage = passages_.front();
    const std::int64_t past = FramesIn(time - passage.start, format_.rate) - kReach - passage.forgotten;
    const auto played = static_cast<std::int64_t>(passage.played.size());
    const bool goesOn = isPlaying_ && passages_.size() == 1;
    if (!goesOn && past >= played) {
      passages_.pop_front();
      continue;
    }
    // In large steps: every frame is then moved a bounded number of times.
    const std::int64_t dropped = std::min(past, played);
    if (dropped > played / 2) {
      passage.played.erase(passage.played.begin(), passage.played.begin() + static_cast<std::ptrdiff_t>(dropped));
      passage.forgotten += dropped;
    }
    return true;
  }
  return false;
}

}  // namespace virtual_audio
