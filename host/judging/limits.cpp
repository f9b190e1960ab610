#include "host/judging/limits.h"

#include <fmt/core.h>

#include <set>
#include <variant>
#include <vector>

#include "host/base/failure.h"
#include "host/base/json.h"
#include "host/base/near_word.h"

namespace host {
namespace {

// One limit: its key, and what it may be set to.
struct Row {
  const char* key;
  std::variant<double Limits::*, std::optional<double> Limits::*> member;
  double least, most;
};

constexpr Row kRows[] = {
    {"minPeak", &Limits::minPeak, 0.0, 1.0},
    {"maxPeak", &Limits::maxPeak, 0.0, 1.0},
    {"minExplainedShare", &Limits::minExplainedShare, 0.0, 1.0},
    {"minSignalToNoiseDb", &Limits::minSignalToNoiseDb, -100.0, 200.0},
    {"maxDcOffset", &Limits::maxDcOffset, 0.0, 1.0},
    {"maxHarmonicsDb", &Limits::maxHarmonicsDb, -200.0, 100.0},
    {"maxFlatShare", &Limits::maxFlatShare, 0.0, 1.0},
    {"maxPeakCompressionDb", &Limits::maxPeakCompressionDb, 0.0, 100.0},
    {"maxInterruptions", &Limits::maxInterruptions, 0.0, 1e6},
    {"maxLostSeconds", &Limits::maxLostSeconds, 0.0, 10.0},
    {"maxSpeedErrorPercent", &Limits::maxSpeedErrorPercent, 0.0, 100.0},
    {"maxChannelDifferenceDb", &Limits::maxChannelDifferenceDb, 0.0, 200.0},
    {"maxInvertedChannels", &Limits::maxInvertedChannels, 0.0, 1e6},
};

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
  std::vector<std::string> keys;
  for (const Row& row : kRows) keys.emplace_back(row.key);
  const std::string near = NearestWord(key, keys);
  throw Failure(ExitCode::kBadInput, fmt::format("{} has no limit '{}'.", source, key),
                near.empty() ? kAdvice : fmt::format("Did you mean '{}'? {}", near, kAdvice));
}

const Row& RowOf(const std::string& key, const std::string& source) {
  for (const Row& row : kRows) {
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

void to_json(Json& json, const Limits& limits) {
  json = Json::object();
  for (const Row& row : kRows) {
    std::visit([&](auto member) { json[row.key] = limits.*member; }, row.member);
  }
}

Limits LimitsInForce(const Limits& limits, bool tonePlays) {
  Limits inForce = limits;
  if (!inForce.minPeak.has_value()) inForce.minPeak = tonePlays ? kLeastOfTone : kLeastListening;
  if (!inForce.maxPeak.has_value() && tonePlays) inForce.maxPeak = kMostOfTone;
  return inForce;
}

void ReadLimits(const std::string& json, const std::string& source, Limits& limits) {
  const Json document = ParseOnce(json, source);
  for (const auto& [key, value] : document.items()) {
    const Row& row = RowOf(key, source);
    const double number = NumberAt(value, fmt::format("{}: {}", source, key), row.least, row.most);
    std::visit([&](auto member) { limits.*member = number; }, row.member);
  }
}

}  // namespace host
