#include "host/report/junit.h"

#include <fmt/chrono.h>
#include <fmt/core.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "host/base/system.h"
#include "host/report/check_rows.h"
#include "host/report/markup.h"
#include "host/report/run_words.h"

namespace host {
namespace {

using Counts = JunitDocument::Counts;

// What a case is that didn't pass. The element's name, its message, and lines with the rest.
struct Trouble {
  const char* element;  // "failure", "error" or "skipped"
  std::string type;     // of a failure or an error, a word or a code
  std::string message;
  std::vector<std::string> lines = {};
};

std::string Attribute(const char* name, const std::string& value) {
  return fmt::format(" {}=\"{}\"", name, Escaped(value));
}

std::string TimeAttribute(const std::optional<double>& seconds) {
  return seconds.has_value() ? fmt::format(" time=\"{:.3f}\"", *seconds) : "";
}

std::string CountAttributes(const Counts& counts) {
  return fmt::format(" tests=\"{}\" failures=\"{}\" errors=\"{}\" skipped=\"{}\"", counts.tests, counts.failures,
                     counts.errors, counts.skipped);
}

// Line feeds are no part of what Escaped takes: it would show them.
std::string Content(const std::vector<std::string>& lines) {
  std::string content;
  for (const std::string& line : lines) {
    if (!line.empty()) content += Escaped(line) + "\n";
  }
  return content;
}

std::string Element(const Trouble& trouble) {
  const std::string type = trouble.type.empty() ? "" : Attribute("type", trouble.type);
  return fmt::format("<{0}{1}{2}>{3}</{0}>\n", trouble.element, Attribute("message", trouble.message), type,
                     Content(trouble.lines));
}

Trouble ErrorOf(const Failure& failure) {
  Trouble error{.element = "error",
                .type = fmt::format("exit code {}", static_cast<int>(failure.exitCode)),
                .message = failure.message,
                .lines = {failure.message, failure.advice}};
  for (const Candidate& candidate : failure.candidates) {
    error.lines.push_back(fmt::format("{}  {}", candidate.name, candidate.id));
  }
  return error;
}

// Of the run itself: whether the module was called, answered, and passed the test.
std::optional<Trouble> TroubleOf(const RunRecord& run) {
  if (run.failure.has_value()) return ErrorOf(*run.failure);
  if (Passed(run.test, *run.outcome)) return std::nullopt;
  return Trouble{.element = "failure",
                 .type = fmt::format("return code {}", run.outcome->returnCode),
                 .message = ReasonOf(run),
                 .lines = {ReasonOf(run), AdviceOf(run)}};
}

std::optional<Trouble> TroubleOf(const Check& check) {
  if (check.result == CheckResult::kPass) return std::nullopt;
  if (check.result == CheckResult::kNotJudged) {
    return Trouble{.element = "skipped", .type = {}, .message = check.sentence};
  }
  Trouble failure{
      .element = "failure", .type = check.word, .message = check.sentence, .lines = {check.sentence, check.advice}};
  if (check.measurements.empty()) return failure;
  for (const CheckRow& row : CheckRows({.checks = {check}})) {
    failure.lines.push_back(
        fmt::format("{}: {}{}{}", row.what, row.measured, row.limit.empty() ? "" : ", ", row.limit));
  }
  return failure;
}

std::optional<Trouble> TroubleOf(const Restoration& restored) {
  using State = Restoration::State;
  const State state = restored.Summary();
  if (state == State::kYes) return std::nullopt;
  if (state == State::kNo) return ErrorOf(NotRestored(restored));
  return Trouble{.element = "skipped", .type = {}, .message = RestorationText(restored)};
}

// The cases of one run.
class Cases {
 public:
  // Dots part packages from classes, so that the name of what was tested has none.
  explicit Cases(const std::string& asked) {
    std::string name = asked;
    std::ranges::replace(name, '.', '_');
    className_ = MachineName().empty() ? name : MachineName() + "." + name;
  }

  void Add(const std::string& name, const std::optional<Trouble>& trouble,
           const std::optional<double>& seconds = std::nullopt, const std::vector<std::string>& log = {}) {
    ++counts_.tests;
    std::string inside;
    if (trouble.has_value()) {
      const std::string element = trouble->element;
      ++(element == "failure" ? counts_.failures : element == "error" ? counts_.errors : counts_.skipped);
      inside += Element(*trouble);
    }
    if (!log.empty()) inside += fmt::format("<system-out>{}</system-out>\n", Content(log));
    text_ += "<testcase" + Attribute("classname", className_) + Attribute("name", name) + TimeAttribute(seconds);
    text_ += inside.empty() ? "/>\n" : ">\n" + inside + "</testcase>\n";
  }

  const Counts& Count() const { return counts_; }
  const std::string& Text() const { return text_; }

 private:
  std::string className_, text_;
  Counts counts_;
};

std::string Property(const char* name, const std::string& value) {
  return "<property" + Attribute("name", name) + Attribute("value", value) + "/>\n";
}

std::string Properties(const RunRecord& run) {
  std::string text = Property("rmthost", ZQRMT_VERSION) + Property("platform", run.platform);
  text += Property("module", run.module);
  const auto addEndpoint = [&text](const char* name, const std::optional<Endpoint>& endpoint) {
    if (endpoint.has_value()) text += Property(name, fmt::format("{} {}", endpoint->name, endpoint->id));
  };
  addEndpoint("capture", run.capture);
  addEndpoint("render", run.render);
  return "<properties>\n" + text + Property("verdict", VerdictTitle(run)) + "</properties>\n";
}

}  // namespace

void JunitDocument::Add(const RunRecord& run) {
  Cases cases(run.asked);
  cases.Add("run", TroubleOf(run), run.call.seconds, run.logLines.value_or(std::vector<std::string>()));
  for (const Check& check : run.verdict.checks) cases.Add(check.name, TroubleOf(check));
  if (run.call.called) cases.Add("settings", TroubleOf(run.call.restored));

  const Counts& counts = cases.Count();
  counts_.tests += counts.tests;
  counts_.failures += counts.failures;
  counts_.errors += counts.errors;
  counts_.skipped += counts.skipped;
  seconds_ += run.call.seconds.value_or(0.0);
  suites_ += "<testsuite" + Attribute("name", run.asked) + CountAttributes(counts) + TimeAttribute(run.call.seconds) +
             fmt::format(" timestamp=\"{:%Y-%m-%dT%H:%M:%S}\"", fmt::gmtime(run.began)) +
             Attribute("hostname", MachineName()) + ">\n" + Properties(run) + cases.Text() + "</testsuite>\n";
}

std::string JunitDocument::Text() const {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"rmthost\"" + CountAttributes(counts_) +
         TimeAttribute(seconds_) + ">\n" + suites_ + "</testsuites>\n";
}

}  // namespace host
