#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/backend.h"
#include "platform/core_audio.h"
#include "platform/virtual/clock.h"
#include "platform/virtual/description.h"
#include "platform/virtual/machine_endpoint.h"

namespace virtual_audio {

// The virtual machine: its clock, its endpoints and their sound. No operation fails by itself. For one thread.
class Machine final : public platform::Backend {
 public:
  explicit Machine(MachineDescription description);

  // There is no other thread to keep off: it brings the sound up to now.
  void lock() override { Advance(); }
  void unlock() override {}

  const char* Name() const override { return "virtual"; }
  std::optional<std::vector<platform::Fault>> DescribedFaults() const override { return faults_; }
  HRESULT List(std::vector<platform::EndpointState>* endpoints) override;
  HRESULT Find(const platform::EndpointKey& key, platform::EndpointState* endpoint) override;
  // Levels are from 0 to 1.
  HRESULT SetLevel(const platform::EndpointKey& key, UINT channel, float level) override;
  HRESULT SetMute(const platform::EndpointKey& key, bool muted) override;
  HRESULT TakesFormat(const platform::EndpointKey& key, const std::optional<SampleFormat>& wanted,
                      SampleFormat* closest) override;
  HRESULT OpenPlayback(const platform::EndpointKey& key, const SampleFormat& format, UINT32 bufferFrames,
                       std::shared_ptr<platform::Playback>* stream) override;
  HRESULT OpenRecording(const platform::EndpointKey& key, const SampleFormat& format,
                        std::shared_ptr<platform::PacketQueue> packets,
                        std::shared_ptr<platform::Recording>* stream) override;
  void Sleep(DWORD milliseconds) override { clock_.Sleep(milliseconds); }

 private:
  void Advance();
  void NoteHearing(MachineEndpoint& endpoint) const;
  void DropEndedStreams();
  MachineEndpoint& EndpointOf(const platform::EndpointKey& key);

  Clock clock_;
  const std::uint64_t seed_;
  const std::vector<platform::Fault> faults_;
  std::vector<MachineEndpoint> endpoints_;
  Time longestDelay_ = 0;
  Time now_ = 0;  // of the operation being carried out
};

}  // namespace virtual_audio
