#include "host/report/check_rows.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

namespace host {
namespace {

// How a measurement is told: `value * factor`, with its unit behind it.
struct Wording {
  const char* name;
  const char* what;
  double factor;
  int decimals;
  const char* unit;
};

constexpr Wording kWordings[] = {
    {"maxAmplitude", "peak, of full scale", 100.0, 2, " %"},
    {"explainedShare", "share of the sound that is the tone", 100.0, 0, " %"},
    {"signalToNoiseDb", "tone above everything else", 1.0, 1, " dB"},
    {"dcOffset", "constant offset, of full scale", 100.0, 1, " %"},
    {"harmonicsDb", "harmonics against the tone", 1.0, 0, " dB"},
    {"flatShare", "samples cut off flat", 100.0, 1, " %"},
    {"peakCompressionDb", "tone's peaks flattened by", 1.0, 1, " dB"},
    {"interruptions", "interruptions of the sound", 1.0, 0, ""},
    {"interruptionsOfHost", "losses of rmthost's own recording", 1.0, 0, ""},
    {"lostAtBeginSeconds", "missing at the begin", 1000.0, 0, " ms"},
    {"lostAtEndSeconds", "missing at the end", 1000.0, 0, " ms"},
    {"speedErrorPercent", "speed off by", 1.0, 2, " %"},
    {"channelDifferenceDb", "quietest channel below the best", 1.0, 1, " dB"},
    {"invertedChannels", "inverted channels", 1.0, 0, ""},
};

Wording WordingOf(const std::string& name) {
  const auto* const known =
      std::find_if(std::begin(kWordings), std::end(kWordings), [&](const Wording& one) { return name == one.name; });
  return known == std::end(kWordings) ? Wording{name.c_str(), name.c_str(), 1.0, 3, ""} : *known;
}

std::string Number(const Wording& wording, double value) {
  const std::string number = fmt::format("{:.{}f}", value * wording.factor, wording.decimals);
  const bool isZero = number.find_first_not_of("-0.") == std::string::npos;
  return isZero && number.front() == '-' ? number.substr(1) : number;
}

std::string LimitText(const Wording& wording, const Measurement& measurement) {
  // A limit is told as it was set, and not rounded.
  const auto exact = [&](double limit) { return fmt::format("{:.6g}", limit * wording.factor); };
  if (measurement.atLeast.has_value() && measurement.atMost.has_value()) {
    return fmt::format("{} to {}{}", exact(*measurement.atLeast), exact(*measurement.atMost), wording.unit);
  }
  if (measurement.atLeast.has_value()) return fmt::format("at least {}{}", exact(*measurement.atLeast), wording.unit);
  return measurement.atMost.has_value() ? fmt::format("at most {}{}", exact(*measurement.atMost), wording.unit) : "";
}

const char* ResultText(CheckResult result) {
  switch (result) {
    case CheckResult::kPass: return "ok";
    case CheckResult::kFail: return "FAIL";
    case CheckResult::kNotJudged: break;
  }
  return "-";
}

}  // namespace

std::vector<CheckRow> CheckRows(const Verdict& verdict) {
  std::vector<CheckRow> rows;
  for (const Check& check : verdict.checks) {
    const std::size_t first = rows.size();
    for (const Measurement& measurement : check.measurements) {
      const bool saysNothing = measurement.value == 0.0 && !measurement.atLeast && !measurement.atMost;
      if (saysNothing) continue;
      const Wording wording = WordingOf(measurement.name);
      rows.push_back({.check = {},
                      .result = {},
                      .what = wording.what,
                      .measured = Number(wording, measurement.value) + wording.unit,
                      .limit = LimitText(wording, measurement)});
    }
    if (check.measurements.empty())
      rows.push_back({.check = {}, .result = {}, .what = check.sentence, .measured = {}, .limit = {}});
    rows[first].check = check.name;
    rows[first].result = ResultText(check.result);
  }
  return rows;
}

}  // namespace host
