#include "platform/virtual/machine_recording.h"

#include <algorithm>

namespace virtual_audio {

HRESULT MachineRecording::Start() {
  start_ = now_;
  startFrame_ = packets_->NextFrame();
  isRunning_ = true;
  return S_OK;
}

HRESULT MachineRecording::Stop() {
  isRunning_ = false;
  return S_OK;
}

void MachineRecording::Record(std::span<const double> gains, double noise, Time heardSince,
                              const SoundPath::Listen& listen) {
  if (!isRunning_) return;
  const std::int64_t due = startFrame_ + FramesIn(now_ - start_, path_.ClockRate());
  while (packets_->NextFrame() < due) {
    // Nothing is read in the time that passes here, so without room all packets that begin in it are lost.
    if (!packets_->HasRoom()) return packets_->LoseBefore(due);
    Take(std::min<std::int64_t>(packets_->FramesLeft(), due - packets_->NextFrame()), gains, noise, heardSince, listen);
  }
}

void MachineRecording::Take(std::int64_t frames, std::span<const double> gains, double noise, Time heardSince,
                            const SoundPath::Listen& listen) {
  const std::int64_t first = packets_->NextFrame() - startFrame_;
  mix_.assign(static_cast<std::size_t>(frames), 0.0);
  path_.Hear(mix_, {.start = start_, .frame = first, .rate = path_.ClockRate()}, heardSince, listen);
  taken_.assign(mix_.size() * format_.FrameBytes(), format_.SilentByte());
  BYTE* sample = taken_.data();
  for (const double heard : mix_) {
    if (heard == 0.0 && noise == 0.0) {
      sample += format_.FrameBytes();
      continue;
    }
    for (const double gain : gains) {
      double value = heard * gain;
      // Distributions differ between standard libraries; the engine doesn't.
      if (noise != 0.0) value += noise * (static_cast<double>(random_() >> 11) * 0x1p-52 - 1.0);
      format_.Write(value, sample);
      sample += format_.SampleBytes();
    }
  }
  packets_->Append(taken_.data(), taken_.size(), start_ + TimeOfFrames(first, path_.ClockRate()));
}

}  // namespace virtual_audio
