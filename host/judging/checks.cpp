#include "host/judging/checks.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

const ChannelFindings& Reference(const RecordingFindings& findings) {
  return findings.channels[findings.referenceChannel];
}

// Fails the check when one of its measurements doesn't hold.
Check Judged(Check check) {
  const bool holds = std::all_of(check.measurements.begin(), check.measurements.end(),
                                 [](const Measurement& measurement) { return measurement.Holds(); });
  check.result = holds ? CheckResult::kPass : CheckResult::kFail;
  if (!holds) return check;
  check.word.clear();
  check.sentence.clear();
  check.advice.clear();
  return check;
}

// The module's figure, unless the host heard less. The host listens from before the module's capture until after it, so
// a larger figure of the module isn't true: it takes samples of 8 bits, which are unsigned, for signed ones. Where nothing
// plays, an offset is no sound either.
double PeakHeard(const Evidence& evidence) {
  if (evidence.findings == nullptr || evidence.findings->tooLittle) return evidence.maxAmplitude;
  double heard = 0.0;
  for (const ChannelFindings& channel : evidence.findings->channels) {
    heard = std::max(heard, channel.level.peak - (evidence.tonePlays ? 0.0 : std::abs(channel.level.dcOffset)));
  }
  return std::min(heard, evidence.maxAmplitude);
}

// What is loudest beside the tone, or in its place.
struct Culprit {
  std::string name, advice;
};

Culprit LoudestOf(const RemainderFindings& remainder) {
  if (remainder.humDb > remainder.otherToneDb && remainder.humDb > remainder.noiseDb) {
    return {fmt::format("mains hum of {:.0f} Hz ({:.0f} dBFS)", remainder.humHz, remainder.humDb),
            "Push the plugs home, try another cable, and take the computer's power supply off or to another socket: "
            "hum comes from a broken shield or from a loop through two earths."};
  }
  if (remainder.otherToneDb > remainder.noiseDb) {
    return {fmt::format("another tone of {:.0f} Hz ({:.0f} dBFS)", remainder.otherToneHz, remainder.otherToneDb),
            "Something else plays or whistles on this path: end other programs that play sound, and look for what "
            "hums or beeps beside the microphone."};
  }
  return {fmt::format("noise ({:.0f} dBFS)", remainder.noiseDb),
          "Bring the microphone nearer to the speaker, away from fans, and check with 'rmthost list' that these are "
          "the endpoints you mean."};
}

const char* KindWord(InterruptionKind kind) {
  switch (kind) {
    case InterruptionKind::kGap: return "gap";
    case InterruptionKind::kRepeat: return "repeat";
    case InterruptionKind::kLoss: return "jump";
    case InterruptionKind::kDisturbance: break;
  }
  return "disturbance";
}

std::string Listed(const std::vector<ToneInterruption>& interruptions) {
  constexpr std::size_t kMostListed = 3;
  std::string list;
  for (std::size_t i = 0; i < std::min(interruptions.size(), kMostListed); ++i) {
    const ToneInterruption& one = interruptions[i];
    list += fmt::format("{}{} of {:.0f} ms at {:.2f} s", list.empty() ? "" : ", ", KindWord(one.kind),
                        1000.0 * one.lengthSeconds, one.beginSeconds);
  }
  if (interruptions.size() > kMostListed) list += fmt::format(" and {} more", interruptions.size() - kMostListed);
  return list;
}

}  // namespace

bool ToneIsHeard(const RecordingFindings& findings) {
  return !findings.tooLittle && !findings.channels.empty() && Reference(findings).tone.heard;
}

Check CheckLevel(const Evidence& evidence, const Limits& limits) {
  const double peak = PeakHeard(evidence);
  Check check{.name = "level", .measurements = {{"maxAmplitude", peak, limits.minPeak, limits.maxPeak}}};
  if (limits.maxPeak.has_value() && peak > *limits.maxPeak) {
    check.word = kClippingWord;
    check.sentence = fmt::format("Clipping: the peak {:.6f} is above {}.", peak, *limits.maxPeak);
    check.advice =
        "Both endpoints were at full level during the test, so turn down the amplifier, lower the microphone's boost, "
        "or move it away from the speaker. --max-peak sets the limit.";
  } else if (peak <= 0.0) {
    check.word = "silence";
    check.sentence = "Silence: nothing at all was heard.";
    check.advice =
        "Check the cable, or that the microphone is near the speaker, and that neither has a switch of its own that is "
        "off; 'rmthost list' shows whether these are the endpoints you mean.";
  } else if (evidence.tonePlays) {
    check.word = "too quiet";
    check.sentence = fmt::format("Too quiet: the peak {:.6f} is below {}.", peak, limits.minPeak.value_or(0.0));
    check.advice =
        "Both endpoints were at full level during the test, so bring the microphone nearer to the speaker, turn up the "
        "amplifier, or raise the microphone's boost. --min-peak sets the limit.";
  } else {
    check.word = "too quiet";
    check.sentence =
        fmt::format("Too quiet: the peak {:.6f} is below {}, and the noise of a living microphone is louder.", peak,
                    limits.minPeak.value_or(0.0));
    check.advice =
        "Check that the microphone is plugged in and that no switch of its own turns it off, and speak while the test "
        "listens. --min-peak sets the limit.";
  }
  return Judged(std::move(check));
}

Check CheckListening(const Evidence& evidence) {
  if (!evidence.requiresListening) {
    return {.name = "tone", .result = CheckResult::kNotJudged, .sentence = evidence.notHeard};
  }
  return {.name = "tone",
          .result = CheckResult::kFail,
          .word = "not listened",
          .sentence =
              "The host couldn't listen beside the module, and --require-listening asks for it. " + evidence.notHeard,
          .advice = "End other programs that hold the capture endpoint, or leave --require-listening out."};
}

Check CheckTone(const RecordingFindings& findings, const Limits& limits) {
  Check check{.name = "tone", .word = "no tone"};
  if (findings.tooLittle || findings.channels.empty()) {
    check.result = CheckResult::kFail;
    check.sentence = fmt::format("Too little was heard to find the test tone in: {:.2f} s.", findings.seconds);
    check.advice = "Run the test again; if it stays so, the capture endpoint delivers no sound.";
    return check;
  }
  const ChannelFindings& channel = Reference(findings);
  const Culprit culprit = LoudestOf(channel.remainder);
  check.sentence = fmt::format("The test tone was not heard, but {}.", culprit.name);
  check.advice = culprit.advice;
  if (!channel.tone.heard) {
    check.result = CheckResult::kFail;
    return check;
  }
  check.measurements = {{"explainedShare", channel.tone.explainedShare, limits.minExplainedShare, std::nullopt}};
  return Judged(std::move(check));
}

Check CheckNoise(const RecordingFindings& findings, const Limits& limits) {
  const ChannelFindings& channel = Reference(findings);
  Check check{
      .name = "noise",
      .measurements = {{"signalToNoiseDb", channel.tone.signalToNoiseDb, limits.minSignalToNoiseDb, std::nullopt},
                       {"dcOffset", channel.level.dcOffset, -limits.maxDcOffset, limits.maxDcOffset}}};
  if (!check.measurements[0].Holds()) {
    const Culprit culprit = LoudestOf(channel.remainder);
    check.word = "noise";
    check.sentence = fmt::format("The tone stands only {:.1f} dB above what else is heard, most of it {}.",
                                 channel.tone.signalToNoiseDb, culprit.name);
    check.advice = culprit.advice;
  } else {
    check.word = "offset";
    check.sentence =
        fmt::format("All of the sound is shifted by {:.3f} of full scale, which is less room for it on one side.",
                    channel.level.dcOffset);
    check.advice =
        "A converter or the supply of a microphone leaks direct current: try another microphone, another cable and "
        "another input in turn to see whose it is.";
  }
  return Judged(std::move(check));
}

Check CheckDistortion(const RecordingFindings& findings, const Limits& limits) {
  const ClippingFindings& clipping = Reference(findings).clipping;
  return Judged(
      {.name = "distortion",
       .measurements = {{"harmonicsDb", clipping.harmonicsDb, std::nullopt, limits.maxHarmonicsDb},
                        {"flatShare", clipping.flatShare, std::nullopt, limits.maxFlatShare},
                        {"peakCompressionDb", clipping.peakCompressionDb, std::nullopt, limits.maxPeakCompressionDb}},
       .word = "distortion",
       .sentence = fmt::format("The tone is distorted: {:.1f} % of the samples are cut off flat, the harmonics are at "
                               "{:.0f} dB, and its peaks are {:.1f} dB too low.",
                               100.0 * clipping.flatShare, clipping.harmonicsDb, clipping.peakCompressionDb),
       .advice = "Something on the path is too loud for what follows it, even where the level itself is low: turn down "
                 "the amplifier, or the microphone's boost; a torn loudspeaker distorts too."});
}

Check CheckInterruptions(const RecordingFindings& findings, const Limits& limits) {
  const std::vector<ToneInterruption>& all = Reference(findings).interruptions;
  std::vector<ToneInterruption> ofPath;
  std::copy_if(all.begin(), all.end(), std::back_inserter(ofPath),
               [](const ToneInterruption& one) { return !one.byHost; });
  const std::size_t ofHost = all.size() - ofPath.size();
  return Judged(
      {.name = "interruptions",
       .measurements = {{"interruptions", static_cast<double>(ofPath.size()), std::nullopt, limits.maxInterruptions},
                        {"interruptionsOfHost", static_cast<double>(ofHost), std::nullopt, std::nullopt}},
       .word = "interrupted",
       .sentence = fmt::format("The tone is interrupted: {}.", Listed(ofPath)),
       .advice = "A loose plug or a failing driver interrupts sound, and so does a computer that is too busy: "
                 "end what keeps it busy, move the cable, and test again."});
}

Check CheckDuration(const RecordingFindings& findings, const Limits& limits) {
  const ToneFindings& tone = Reference(findings).tone;
  const bool atEnd = tone.lostAtEndSeconds >= tone.lostAtBeginSeconds;
  return Judged(
      {.name = "duration",
       .measurements = {{"lostAtBeginSeconds", tone.lostAtBeginSeconds, std::nullopt, limits.maxLostSeconds},
                        {"lostAtEndSeconds", tone.lostAtEndSeconds, std::nullopt, limits.maxLostSeconds}},
       .word = "cut short",
       .sentence = fmt::format("The tone is cut short: its {} {:.2f} s are missing, and the recording runs "
                               "on.",
                               atEnd ? "last" : "first", std::max(tone.lostAtEndSeconds, tone.lostAtBeginSeconds)),
       .advice = atEnd ? "The output or the amplifier switches off too early: look for a power-saving "
                         "setting of the driver or a noise gate."
                       : "The output or the amplifier wakes up too slowly: look for a power-saving setting "
                         "of the driver or a noise gate, and test again at once."});
}

Check CheckSpeed(const RecordingFindings& findings, const Limits& limits) {
  const double error = 100.0 * (Reference(findings).tone.speed - 1.0);
  return Judged(
      {.name = "speed",
       .measurements = {{"speedErrorPercent", error, -limits.maxSpeedErrorPercent, limits.maxSpeedErrorPercent}},
       .word = "wrong speed",
       .sentence = fmt::format("The tone is {:.2f} % too {}.", std::abs(error), error < 0 ? "low" : "high"),
       .advice = "One sample rate is taken for another (44100 for 48000 Hz is 8 %), or the device's clock is "
                 "off: set both endpoints to the same rate, and update the driver."});
}

Check CheckChannels(const RecordingFindings& findings, const Limits& limits) {
  double difference = 0.0, inverted = 0.0;
  std::size_t quietest = findings.referenceChannel, invertedOne = findings.referenceChannel;
  for (std::size_t i = 0; i < findings.channels.size(); ++i) {
    const ChannelFindings& channel = findings.channels[i];
    if (-channel.relativeLevelDb > difference) {
      difference = -channel.relativeLevelDb;
      quietest = i;
    }
    if (channel.correlation < -0.5) {
      inverted += 1.0;
      invertedOne = i;
    }
  }
  Check check{.name = "channels",
              .measurements = {{"channelDifferenceDb", difference, std::nullopt, limits.maxChannelDifferenceDb},
                               {"invertedChannels", inverted, std::nullopt, limits.maxInvertedChannels}}};
  if (!check.measurements[0].Holds()) {
    check.word = "dead channel";
    check.sentence = findings.channels[quietest].tone.heard
                         ? fmt::format("Channel {} is dead: the tone is {:.0f} dB quieter there than on channel {}.",
                                       quietest + 1, difference, findings.referenceChannel + 1)
                         : fmt::format("Channel {} is dead: the tone is heard on channel {}, but not there.",
                                       quietest + 1, findings.referenceChannel + 1);
    check.advice = "Check the plug and the cable for a broken wire, and the balance of the endpoint.";
  } else {
    check.word = "inverted channel";
    check.sentence =
        fmt::format("Channel {} is inverted against channel {}.", invertedOne + 1, findings.referenceChannel + 1);
    check.advice = "Two wires of that channel are swapped, or the cable is a balanced one on an unbalanced input.";
  }
  return Judged(std::move(check));
}

}  // namespace host
