#pragma once

#include <cstddef>
#include <tuple>
#include <vector>

#include "host/base/member.h"

namespace host {

// Levels in dB are relative to what their comment names; nothing there is kSilenceDb. Times are in seconds from the
// first frame of the recording.
constexpr double kSilenceDb = -200.0;

struct LevelFindings {
  double peak = 0.0;               // largest absolute sample, full scale 1.0
  double rms = 0.0;                // where the tone is, or of everything where there is none; without the offset
  double dcOffset = 0.0;           // mean of all samples
  std::size_t invalidSamples = 0;  // NaN and infinities, taken for 0

  static constexpr auto Members() {
    using F = LevelFindings;
    return std::tuple(Member("peak", &F::peak), Member("rms", &F::rms), Member("dcOffset", &F::dcOffset),
                      Member("invalidSamples", &F::invalidSamples));
  }
};

struct ToneFindings {
  bool heard = false;  // the members below mean something
  // When the tone's first sample would be heard, from the phases of its partials; and from and to when it was heard.
  // The tone is quiet for the first and last 70 ms, which in noise aren't heard.
  double beginSeconds = 0.0;
  double heardFromSeconds = 0.0;
  double heardToSeconds = 0.0;
  double lostAtBeginSeconds = 0.0;  // how much of the tone wasn't heard although the recording ran
  double lostAtEndSeconds = 0.0;
  bool recordingEndedFirst = false;  // the tone had more to come when the recording ended, which is no fault
  double speed = 0.0;                // 1.0 is right; below it the tone is low and long
  double rms = 0.0;                  // of the fitted tone alone
  // The share of the energy within 200 Hz of the tone that seven steady partials explain, 0 to 1.
  double explainedShare = 0.0;
  // How near the partials are to those that are generated, 0 to 1; echoes move them apart. One sine reaches 0.14, three
  // reach 0.43.
  double patternMatch = 0.0;
  std::vector<double> partials;         // the amplitude heard of each partial from the lowest up, full scale 1.0
  double signalToNoiseDb = kSilenceDb;  // the tone against everything else, where nothing interrupts it
  double levelRangeDb = 0.0;            // between its quietest and loudest 200 ms, as automatic gain makes it

  static constexpr auto Members() {
    using F = ToneFindings;
    return std::tuple(Member("heard", &F::heard), Member("beginSeconds", &F::beginSeconds),
                      Member("heardFromSeconds", &F::heardFromSeconds), Member("heardToSeconds", &F::heardToSeconds),
                      Member("lostAtBeginSeconds", &F::lostAtBeginSeconds),
                      Member("lostAtEndSeconds", &F::lostAtEndSeconds),
                      Member("recordingEndedFirst", &F::recordingEndedFirst), Member("speed", &F::speed),
                      Member("rms", &F::rms), Member("explainedShare", &F::explainedShare),
                      Member("patternMatch", &F::patternMatch), Member("partials", &F::partials),
                      Member("signalToNoiseDb", &F::signalToNoiseDb), Member("levelRangeDb", &F::levelRangeDb));
  }
};

struct ClippedStretch {
  double beginSeconds = 0.0;
  double lengthSeconds = 0.0;

  static constexpr auto Members() {
    using S = ClippedStretch;
    return std::tuple(Member("beginSeconds", &S::beginSeconds), Member("lengthSeconds", &S::lengthSeconds));
  }
};

struct ClippingFindings {
  double flatShare = 0.0;  // share of samples in tops that are flatter than the tone's own
  // From the first to the last of flat tops that are nearer than 30 ms to each other, in order of time and at most 100.
  // Empty when the flat share is too small to be told from the tone's own tops.
  std::vector<ClippedStretch> clippedStretches;
  // How much less gain the tone's peaks get than its flanks: about 0 in a linear path, positive when limited.
  double peakCompressionDb = 0.0;
  double thdNDb = kSilenceDb;             // everything but the tone against all of it
  double harmonicsDb = kSilenceDb;        // harmonics 2 to 7 that the rate has room for, against the tone
  double intermodulationDb = kSilenceDb;  // lines beside the partials, where distortion puts them, against the tone

  static constexpr auto Members() {
    using F = ClippingFindings;
    return std::tuple(Member("flatShare", &F::flatShare), Member("clippedStretches", &F::clippedStretches),
                      Member("peakCompressionDb", &F::peakCompressionDb), Member("thdNDb", &F::thdNDb),
                      Member("harmonicsDb", &F::harmonicsDb), Member("intermodulationDb", &F::intermodulationDb));
  }
};

// What is heard beside the tone; all of the sound where there is no tone. Levels are in dBFS, a sine of full scale
// being 0.
struct RemainderFindings {
  double totalDb = kSilenceDb;
  double humDb = kSilenceDb;  // mains hum with its harmonics
  double humHz = 0.0;         // 50 or 60, 0 without hum
  double otherToneDb = kSilenceDb;
  double otherToneHz = 0.0;     // the strongest line that is neither hum nor the tone nor its harmonics; 0 without any
  double noiseDb = kSilenceDb;  // the rest

  static constexpr auto Members() {
    using F = RemainderFindings;
    return std::tuple(Member("totalDb", &F::totalDb), Member("humDb", &F::humDb), Member("humHz", &F::humHz),
                      Member("otherToneDb", &F::otherToneDb), Member("otherToneHz", &F::otherToneHz),
                      Member("noiseDb", &F::noiseDb));
  }
};

enum class InterruptionKind {
  kGap,         // silence
  kRepeat,      // something is heard twice
  kLoss,        // something is left out
  kDisturbance  // another sound covers the tone, or none of the above can be told
};

// "gap", "repeat", "loss" or "disturbance".
inline const char* Word(InterruptionKind kind) {
  constexpr const char* kWords[] = {"gap", "repeat", "loss", "disturbance"};
  return kWords[static_cast<std::size_t>(kind)];
}

struct ToneInterruption {
  InterruptionKind kind = InterruptionKind::kGap;
  double beginSeconds = 0.0;
  double lengthSeconds = 0.0;
  // How much later (or earlier, when negative) than before the tone goes on. A delay can be told from 200 ms more or
  // less only by where the tone ends, so this lies between -0.1 and 0.1.
  double shiftSeconds = 0.0;
  double levelDb = 0.0;  // what is heard there against what should be
  bool byHost = false;   // at one of the recording's own discontinuities

  static constexpr auto Members() {
    using F = ToneInterruption;
    return std::tuple(Member("kind", &F::kind), Member("beginSeconds", &F::beginSeconds),
                      Member("lengthSeconds", &F::lengthSeconds), Member("shiftSeconds", &F::shiftSeconds),
                      Member("levelDb", &F::levelDb), Member("byHost", &F::byHost));
  }
};

struct ChannelFindings {
  LevelFindings level;
  ToneFindings tone;
  ClippingFindings clipping;  // only when the tone is heard
  RemainderFindings remainder;
  std::vector<ToneInterruption> interruptions;  // in order of time; only when the tone is heard
  // Against the reference channel: its tone's level, and how alike the two are, -1 (inverted) to 1. Two microphones
  // half a wave apart, 14 cm in air, look inverted too. The level is kSilenceDb when the tone is heard on the reference
  // channel alone; both are 0 when it is heard on neither.
  double relativeLevelDb = 0.0;
  double correlation = 0.0;

  static constexpr auto Members() {
    using F = ChannelFindings;
    return std::tuple(Member("level", &F::level), Member("tone", &F::tone), Member("clipping", &F::clipping),
                      Member("remainder", &F::remainder), Member("interruptions", &F::interruptions),
                      Member("relativeLevelDb", &F::relativeLevelDb), Member("correlation", &F::correlation));
  }
};

struct RecordingFindings {
  double rateHz = 0.0;
  double seconds = 0.0;
  bool tooLittle = true;  // less than kLeastSeconds was recorded; only levels are found then
  std::size_t referenceChannel =
      0;  // the one whose tone was heard best, or else the loudest; its figures are the recording's
  std::vector<ChannelFindings> channels;

  static constexpr double kLeastSeconds = 0.3;

  static constexpr auto Members() {
    using F = RecordingFindings;
    return std::tuple(Member("rateHz", &F::rateHz), Member("seconds", &F::seconds), Member("tooLittle", &F::tooLittle),
                      Member("referenceChannel", &F::referenceChannel), Member("channels", &F::channels));
  }
};

}  // namespace host
