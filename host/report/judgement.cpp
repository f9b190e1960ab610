#include "host/report/judgement.h"

#include <fmt/format.h>

namespace host {

Judgement Judge(Test test, const Outcome& outcome, const Limits& limits) {
  if (!Passed(test, outcome)) return Judgement::kFailed;
  if (test == Test::kPlay) return Judgement::kPass;
  const double peak = outcome.maxAmplitude;
  if (limits.minPeak.has_value() && peak < *limits.minPeak) {
    return peak > 0.0 ? Judgement::kTooQuiet : Judgement::kSilence;
  }
  return limits.maxPeak.has_value() && peak > *limits.maxPeak ? Judgement::kClipping : Judgement::kPass;
}

const char* Word(Judgement judgement) {
  static constexpr const char* kWords[] = {"pass", "silence", "too quiet", "clipping", "failed"};
  return kWords[static_cast<std::size_t>(judgement)];
}

std::string JudgementText(Judgement judgement, const Outcome& outcome, const Limits& limits) {
  switch (judgement) {
    case Judgement::kSilence: return "Silence: nothing at all was heard.";
    case Judgement::kTooQuiet:
      return fmt::format("Too quiet: the peak {:.6f} is below {}.", outcome.maxAmplitude, *limits.minPeak);
    case Judgement::kClipping:
      return fmt::format("Clipping: the peak {:.6f} is above {}.", outcome.maxAmplitude, *limits.maxPeak);
    default: return outcome.returnMessage;
  }
}

std::string AdviceFor(Judgement judgement, const Outcome& outcome) {
  switch (judgement) {
    case Judgement::kPass: return "";
    case Judgement::kSilence:
      return "Check the cable, or that the microphone is near the speaker, and that neither has a switch of its own "
             "that is off; 'rmthost list' shows whether these are the endpoints you mean.";
    case Judgement::kTooQuiet:
      return "Both endpoints were at full level during the test, so bring the microphone nearer to the speaker, turn "
             "up the amplifier, or raise the microphone's boost. --min-peak sets the limit.";
    case Judgement::kClipping:
      return "Both endpoints were at full level during the test, so turn down the amplifier, lower the microphone's "
             "boost, or move it away from the speaker. --max-peak sets the limit.";
    case Judgement::kFailed: break;
  }
  return AdviceFor(outcome);
}

}  // namespace host
