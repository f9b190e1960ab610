#include "host/judging/limits.h"

#include <fmt/format.h>

#include <set>
#include <vector>

#include "host/base/failure.h"
#include "host/base/json.h"
#include "host/base/near_word.h"

namespace host {
namespace {

constexpr LimitRow kRows[] = {
    {"minExplainedShare", "tone", "", &Limits::minExplainedShare, 0.0, 1.0,
     "the least share of the sound near 1200 Hz that the tone's partials explain"},
    {"minSignalToNoiseDb", "noise", "dB", &Limits::minSignalToNoiseDb, -100.0, 200.0,
     "the least distance of the tone from everything else that is heard"},
    {"maxDcOffset", "noise", "", &Limits::maxDcOffset, 0.0, 1.0,
     "the most that the sound's mean may be away from 0, full scale being 1"},
    {"maxHarmonicsDb", "distortion", "dB", &Limits::maxHarmonicsDb, -200.0, 100.0,
     "the most that harmonics 2 to 7 may have against the tone"},
    {"maxFlatShare", "distortion", "", &Limits::maxFlatShare, 0.0, 1.0,
     "the largest share of samples in tops that are cut off"},
    {"maxPeakCompressionDb", "distortion", "dB", &Limits::maxPeakCompressionDb, 0.0, 100.0,
     "how much less gain the tone's peaks may get than its flanks"},
    {"maxInterruptions", "interruptions", "", &Limits::maxInterruptions, 0.0, 1e6,
     "the most gaps, repeats, losses and disturbances"},
    {"maxLostSeconds", "duration", "s", &Limits::maxLostSeconds, 0.0, 10.0,
     "how much of the tone may be missing at its begin or end while the recording runs"},
    {"maxSpeedErrorPercent", "speed", "%", &Limits::maxSpeedErrorPercent, 0.0, 100.0,
     "how far the tone's speed may be from the right one"},
    {"maxChannelDifferenceDb", "channels", "dB", &Limits::maxChannelDifferenceDb, 0.0, 200.0,
     "how much quieter than on the best channel the tone may be on another"},
    {"maxInvertedChannels", "channels", "", &Limits::maxInvertedChannels, 0.0, 1e6,
     "the most channels whose polarity is against the best channel's"},
};

constexpr const char* kMinPeak = "minPeak";
constexpr const char* kMaxPeak = "maxPeak";

// With a tone: a tone at full level that is heard at less than a hundredth didn't come through, and one that comes within a
// thousandth of full scale was cut off. Without: three steps of 16 bits, which a dead input that flickers doesn't reach.
constexpr double kLeastOfTone = 0.01, kMostOfTone = 0.999, kLeastListening = 0.0001;

constexpr const char* kAdvice = "'rmthost limits' prints a file with every key and its default.";

double NumberAt(const Json& value, const std::string& place, double least, double most) {
  if (value.is_number() && value.get<double>() >= least && value.get<double>() <= most) return value.get<double>();
  throw Failure(ExitCode::kBadInput,
                fmt::format("{} must be a number from {} to {}, not {}.", place, least, most, TextOf(value)), kAdvice);
}

[[noreturn]] void RefuseKey(const std::string& source, const std::string& key) {
  std::vector<std::string> keys = {kMinPeak, kMaxPeak};
  for (const LimitRow& row : kRows) keys.emplace_back(row.key);
  const std::string near = NearestWord(key, keys);
  throw Failure(ExitCode::kBadInput, fmt::format("{} has no limit '{}'.", source, key),
                near.empty() ? kAdvice : fmt::format("Did you mean '{}'? {}", near, kAdvice));
}

const LimitRow& RowOf(const std::string& key, const std::string& source) {
  for (const LimitRow& row : kRows) {
    if (key == row.key) return row;
  }
  RefuseKey(source, key);
}

// The document; its keys are each looked for a second time, which the parser by itself passes over.
Json ParseOnce(const std::string& json, const std::string& source) {
  std::set<std::string> keys;
  std::string twice;
  const auto note = [&](int depth, Json::parse_event_t event, Json& parsed) {
    if (event == Json::parse_event_t::key && depth == 1 && !keys.insert(parsed.get<std::string>()).second) {
      twice = parsed.get<std::string>();
    }
    return true;
  };
  try {
    Json document = Json::parse(json, note);
    if (!twice.empty()) {
      throw Failure(ExitCode::kBadInput, fmt::format("{} names '{}' twice.", source, twice), "Leave one of them out.");
    }
    if (!document.is_object()) throw Failure(ExitCode::kBadInput, source + " holds no JSON object.", kAdvice);
    return document;
  } catch (const Json::exception& error) {
    throw Failure(ExitCode::kBadInput, fmt::format("{} isn't JSON: {}.", source, error.what()), kAdvice);
  }
}

}  // namespace

std::span<const LimitRow> LimitRows() { return kRows; }

Limits LimitsInForce(const Limits& limits, bool tonePlays) {
  Limits inForce = limits;
  if (!inForce.minPeak.has_value()) inForce.minPeak = tonePlays ? kLeastOfTone : kLeastListening;
  if (!inForce.maxPeak.has_value() && tonePlays) inForce.maxPeak = kMostOfTone;
  return inForce;
}

void ReadLimits(const std::string& json, const std::string& source, Limits& limits) {
  const Json document = ParseOnce(json, source);
  for (const auto& [key, value] : document.items()) {
    const std::string place = fmt::format("{}: {}", source, key);
    if (key == kMinPeak) {
      limits.minPeak = NumberAt(value, place, 0.0, 1.0);
    } else if (key == kMaxPeak) {
      limits.maxPeak = NumberAt(value, place, 0.0, 1.0);
    } else {
      const LimitRow& row = RowOf(key, source);
      limits.*row.member = NumberAt(value, place, row.least, row.most);
    }
  }
}

}  // namespace host
