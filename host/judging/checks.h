#pragma once

#include "host/judging/verdict.h"

// The checks one by one. Each holds the figures of the findings' reference channel to the limits, and puts a failure into
// words. All but CheckLevel and CheckListening need a recording; those behind CheckTone need the tone in it.
namespace host {

inline constexpr const char* kClippingWord = "clipping";

// Whether the analysis found the tone on any channel.
bool ToneIsHeard(const RecordingFindings& findings);

Check CheckLevel(const Evidence& evidence, const Limits& limits);
// The tone's check when the host has no recording.
Check CheckListening(const Evidence& evidence);
Check CheckTone(const RecordingFindings& findings, const Limits& limits);
Check CheckNoise(const RecordingFindings& findings, const Limits& limits);
Check CheckDistortion(const RecordingFindings& findings, const Limits& limits);
Check CheckInterruptions(const RecordingFindings& findings, const Limits& limits);
Check CheckDuration(const RecordingFindings& findings, const Limits& limits);
Check CheckSpeed(const RecordingFindings& findings, const Limits& limits);
Check CheckChannels(const RecordingFindings& findings, const Limits& limits);

}  // namespace host
