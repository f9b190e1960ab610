// What an audio system does for the front. The front (platform/front) has the Core Audio objects that callers hold: it
// checks arguments and the order of calls, counts references, traces, and fails what it is told to fail. A backend does
// the rest and knows nothing of those objects. The backends that there are stand in backends.cpp.
//
// Statuses are those that Core Audio publishes: S_OK, or a failure, with nothing handed out. What every operation may
// give: AUDCLNT_E_DEVICE_INVALIDATED for an endpoint that has gone, AUDCLNT_E_SERVICE_NOT_RUNNING for an audio system that
// has ended or doesn't answer. No operation waits without a limit. All of them may throw std::bad_alloc and nothing else.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/core_audio.h"
#include "platform/endpoint_state.h"
#include "platform/front/operation.h"
#include "platform/front/packet_queue.h"
#include "platform/sample_format.h"

namespace platform {

// Why a platform can't be had, in a sentence for the person who asked for it (UTF-8), and as a status: E_INVALIDARG for
// a description that can't be used, any other for an audio system that isn't there.
class PlatformError : public std::runtime_error {
 public:
  explicit PlatformError(const std::string& sentence, HRESULT status = E_INVALIDARG)
      : std::runtime_error(sentence), status_(status) {}
  HRESULT Status() const { return status_; }

 private:
  HRESULT status_;
};

// An open stream, halted until Start. Its owner is the front, which ends it by destroying it, running or not, without the
// backend's lock and before the backend itself is destroyed.
class Stream {
 public:
  Stream() = default;
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  virtual ~Stream() = default;

  // Called on a stream that isn't running.
  virtual HRESULT Start() = 0;
  // Called on a running stream.
  virtual HRESULT Stop() = 0;
  bool IsRunning() const { return isRunning_; }

 protected:
  // The backend keeps it: a Start that fails may leave the stream running.
  bool isRunning_ = false;
};

// Sound on its way to a render endpoint: a queue of frames, played while the stream runs.
class Playback : public Stream {
 public:
  // Frames queued and not yet played. A stream that stands still although it runs fails after a while.
  virtual HRESULT Padding(UINT32* frames) = 0;
  // Queues whole frames, at least one. There was room for them when Padding was asked last.
  virtual HRESULT Write(std::span<const BYTE> frames) = 0;
};

// Sound on its way from a capture endpoint: the backend puts it into the stream's PacketQueue, with its own lock held.
class Recording : public Stream {
 public:
  // S_OK while the stream can be used. What was captured before it fails isn't given out any more.
  virtual HRESULT Status() = 0;
};

// The audio system that a program uses beside others of its kind, where there is such a thing.
struct ServerInfo {
  std::string name, version;
};

class Backend {
 public:
  Backend() = default;
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;
  virtual ~Backend() = default;

  // Held around every other operation here and on its streams but Name, DescribedFaults and Sleep; named as
  // std::lock_guard wants it. The front calls on one thread at a time. A backend with a thread of its own keeps it off
  // with this; one with a clock of its own brings its sound up to now.
  virtual void lock() = 0;
  virtual void unlock() = 0;

  // For the state text. It needn't be the name by which the backend is chosen.
  virtual const char* Name() const = 0;
  // The server behind the backend; left empty where there is none.
  virtual HRESULT DescribeServer(std::optional<ServerInfo>* /*server*/) { return S_OK; }
  // Faults to have. Only a backend that gives a list, which may be empty, is traced: a trace grows with every call.
  virtual std::optional<std::vector<Fault>> DescribedFaults() const { return std::nullopt; }

  // All endpoints, in the order in which callers see them, behind what is in the list already.
  virtual HRESULT List(std::vector<EndpointState>* endpoints) = 0;
  // The endpoint as it is now; its default roles may be left out.
  virtual HRESULT Find(const EndpointKey& key, EndpointState* endpoint) = 0;

  // Sets the level of one channel exactly. E_INVALIDARG for a channel that the endpoint doesn't have and for a level that
  // it can't take, which any float may be.
  virtual HRESULT SetLevel(const EndpointKey& key, UINT channel, float level) = 0;
  virtual HRESULT SetMute(const EndpointKey& key, bool muted) = 0;

  // Whether a stream can have the format without conversion: S_OK; S_FALSE when it can have `closest` instead, which is
  // set then; AUDCLNT_E_UNSUPPORTED_FORMAT when it can have neither. `wanted` is empty for a format that isn't of a kind
  // that SampleFormat knows.
  virtual HRESULT TakesFormat(const EndpointKey& key, const std::optional<SampleFormat>& wanted,
                              SampleFormat* closest) = 0;

  // Opens a stream. Where the format isn't one that TakesFormat takes, the caller asked for conversion. `bufferFrames` is
  // how much can be queued at once. The packet queue has that size; the recording shares it.
  virtual HRESULT OpenPlayback(const EndpointKey& key, const SampleFormat& format, UINT32 bufferFrames,
                               std::shared_ptr<Playback>* stream) = 0;
  virtual HRESULT OpenRecording(const EndpointKey& key, const SampleFormat& format,
                                std::shared_ptr<PacketQueue> packets, std::shared_ptr<Recording>* stream) = 0;

  // Waits on the audio system's clock, without the lock.
  virtual void Sleep(DWORD milliseconds) = 0;
};

}  // namespace platform
