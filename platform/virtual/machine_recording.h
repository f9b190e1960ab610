#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/front/packet_queue.h"
#include "platform/sample_format.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/sound_path.h"

namespace virtual_audio {

// The sound of one capture stream: frames taken from Start to Stop. A packet that begins while there is no room for it is
// lost.
class MachineRecording final : public platform::Recording {
 public:
  // `now` refers to the machine's time, which stands still during an operation.
  MachineRecording(const platform::SampleFormat& format, std::shared_ptr<platform::PacketQueue> packets, SoundPath path,
                   std::uint64_t seed, const Time& now)
      : format_(format), packets_(std::move(packets)), path_(std::move(path)), random_(seed), now_(now) {}

  const platform::SampleFormat& Format() const { return format_; }

  HRESULT Start() override;
  HRESULT Stop() override;
  HRESULT Status() override { return S_OK; }

  // Takes the frames that are due now: on every channel what arrives over the path, times the channel's gain, plus noise of
  // the given peak. `heardSince` and `listen` are as for SoundPath::Hear.
  void Record(std::span<const double> gains, double noise, Time heardSince, const SoundPath::Listen& listen);

 private:
  void Take(std::int64_t frames, std::span<const double> gains, double noise, Time heardSince,
            const SoundPath::Listen& listen);

  const platform::SampleFormat format_;
  const std::shared_ptr<platform::PacketQueue> packets_;
  SoundPath path_;
  std::mt19937_64 random_;
  const Time& now_;
  Time start_ = 0;               // of the last Start
  std::int64_t startFrame_ = 0;  // the frame that was next then
  std::vector<double> mix_;
  std::vector<BYTE> taken_;
};

}  // namespace virtual_audio
