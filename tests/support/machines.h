#pragma once

#include <string>

// The description of a machine with a speaker and a microphone that hears it at half its amplitude. Both have two
// channels and are muted and turned down. The clock is virtual, so the same calls capture the same samples. `faults`
// are the elements of the description's list of faults.
inline std::string QuietMachine(const std::string& faults = "") {
  return R"({"clock": "virtual", "endpoints": [
  {"id": "{0.0.0.00000000}.{speaker}", "name": "Speaker", "flow": "render", "default": ["console", "multimedia"],
   "levels": [0.25, 0.75], "muted": true, "format": {"tag": "pcm", "channels": 2, "rate": 48000, "bits": 16}},
  {"id": "{0.0.1.00000000}.{mic}", "name": "Mic", "flow": "capture", "default": ["console", "multimedia"],
   "levels": [0.5, 0.125], "muted": true, "format": {"tag": "pcm", "channels": 2, "rate": 44100, "bits": 16},
   "hears": [{"endpoint": "{0.0.0.00000000}.{speaker}", "gain": 0.5}]}],
  "faults": [)" +
         faults + "]}";
}

inline constexpr const char* kSpeaker = "{0.0.0.00000000}.{speaker}";
inline constexpr const char* kMic = "{0.0.1.00000000}.{mic}";

inline constexpr const char* kPlayContract =
    R"({"CoreData":{"DeviceInfo":{"DeviceInstanceID":"{0.0.0.00000000}.{speaker}"}}})";
inline constexpr const char* kRecordContract =
    R"({"CoreData":{"DeviceInfo":{"DeviceInstanceID":"{0.0.1.00000000}.{mic}",)"
    R"("AudioData":{"maxAmplitude":0.125,"targetDevice":"{0.0.0.00000000}.{speaker}"}}}})";
inline constexpr const char* kListenContract =
    R"({"CoreData":{"DeviceInfo":{"DeviceInstanceID":"{0.0.1.00000000}.{mic}","AudioData":{"maxAmplitude":0.125}}}})";
