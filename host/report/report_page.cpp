#include "host/report/report_page.h"

#include <fmt/format.h>

#include "host/report/check_rows.h"
#include "host/report/diagrams.h"
#include "host/report/markup.h"
#include "host/report/run_words.h"
#include "host/report/sound_text.h"
#include "host/report/style_sheets.h"

namespace host {
namespace {

// Nothing for an empty text.
std::string Paragraph(const char* style, const std::string& text) {
  return text.empty() ? "" : fmt::format("<p class=\"{}\">{}</p>\n", style, Escaped(text));
}

// A text that may be long, in a box that is cut on paper.
std::string Long(const std::string& text) { return fmt::format("<div class=\"long\">{}</div>", Escaped(text)); }

std::string Headline(const RunRecord& run) {
  std::string html =
      fmt::format("<h1 class=\"{}\">{}</h1>\n", run.Passed() ? "pass" : "fail", Escaped(VerdictTitle(run)));
  html += Paragraph("long", EndpointsTitle(run)) + Paragraph("long", ReasonOf(run));
  html += Paragraph("long", AdviceOf(run)) + Paragraph("long", run.verdict.caution);
  if (run.call.restored.Summary() == Restoration::State::kNo) {
    const Failure failure = NotRestored(run.call.restored);
    html += Paragraph("note fail", failure.message + " " + failure.advice);
  }
  return html + Paragraph("note", VirtualNote(run));
}

std::string FactRow(const char* what, const std::string& value) {
  return fmt::format("<tr><th>{}</th><td>{}</td></tr>\n", what, Long(value));
}

std::string EndpointFact(const char* what, const std::optional<Endpoint>& endpoint) {
  if (!endpoint.has_value()) return "";
  return fmt::format("<tr><th>{}</th><td><div class=\"line\">{}</div><div class=\"line\">{}</div></td></tr>\n", what,
                     Escaped(endpoint->name), Escaped(endpoint->id));
}

std::string Facts(const RunRecord& run) {
  std::string html = "<h2>The test</h2>\n<table class=\"facts\">\n";
  html += FactRow("tested", TestedText(run));
  html += EndpointFact("capture", run.capture) + EndpointFact("render", run.render);
  html += FactRow("module", run.module);
  if (run.outcome.has_value()) {
    html += FactRow("its answer", fmt::format("{} ({})", run.outcome->returnMessage, run.outcome->returnCode));
  }
  if (run.call.seconds.has_value()) html += FactRow("its time", fmt::format("{:.2f} s", *run.call.seconds));
  if (run.call.heard.has_value())
    html += FactRow("heard", fmt::format("{}", fmt::join(SoundFigures(*run.call.heard), ", ")));
  if (run.save.has_value()) html += FactRow("its sound", *run.save);
  if (run.call.notHeard.has_value()) html += FactRow("not heard", *run.call.notHeard);
  return html + "</table>\n";
}

std::string Checks(const RunRecord& run) {
  if (run.verdict.checks.empty()) return "";
  std::string html =
      "<h2>Checks</h2>\n<table class=\"checks\">\n<thead><tr><th>check</th><th>result</th><th>figure</th>"
      "<th class=\"number\">measured</th><th>limit</th></tr></thead>\n";
  for (const CheckRow& row : CheckRows(run.verdict)) {
    const char* style = row.result == "FAIL" ? "fail" : row.result == "ok" ? "pass" : "faint";
    html += fmt::format(
        "<tr><td>{}</td><td class=\"word {}\">{}</td><td>{}</td><td class=\"number\">{}</td><td>{}</td></tr>\n",
        Escaped(row.check), style, Escaped(row.result), Long(row.what), Escaped(row.measured), Escaped(row.limit));
  }
  html += "</table>\n<div class=\"more\">\n";
  // What the headline doesn't say.
  for (const Check& check : run.verdict.checks) {
    const bool isNews = check.result == CheckResult::kFail && check.sentence != run.verdict.sentence;
    if (isNews) html += Paragraph("", fmt::format("{}: {} {}", check.name, check.sentence, check.advice));
  }
  return html + "</div>\n";
}

std::string Picture(const RunRecord& run) {
  if (!run.call.heard.has_value()) return "";
  return fmt::format(
      "<h2>What was heard</h2>\n<svg class=\"drawing\" viewBox=\"0 0 {} {}\" role=\"img\" "
      "aria-label=\"Waveform and spectrum\">\n{}</svg>\n",
      kDiagramsWidth, kDiagramsHeight, Diagrams(run, 0.0));
}

std::string StateOf(const EndpointRestoration& endpoint) {
  if (endpoint.error.has_value()) return "NOT as before: " + *endpoint.error;
  std::string text = "as before";
  if (!endpoint.putBack.empty()) text = fmt::format("{} put back", fmt::join(endpoint.putBack, " and "));
  if (!endpoint.unknown.empty()) text += fmt::format(", {} unknown", fmt::join(endpoint.unknown, " and "));
  return text;
}

std::string Settings(const Restoration& restored) {
  std::string html = "<h2>Settings of the endpoints</h2>\n";
  if (restored.notNeeded.has_value()) return html + Paragraph("", "Nothing to put back: " + *restored.notNeeded + ".");
  html +=
      "<table class=\"settings\">\n<thead><tr><th>endpoint</th><th>before the test</th><th>now</th><th></th></tr></thead>\n";
  for (const EndpointRestoration& endpoint : restored.endpoints) {
    html += fmt::format("<tr><td>{}</td><td>{}</td><td>{}</td><td class=\"{}\">{}</td></tr>\n", Long(endpoint.name),
                        Long(endpoint.before.value_or("unknown")), Long(endpoint.after.value_or("unknown")),
                        endpoint.error.has_value() ? "fail" : "", Long(StateOf(endpoint)));
  }
  return html + "</table>\n";
}

std::string Attachments(const RunRecord& run) {
  std::string html, lines;
  for (const std::string& note : {run.logMoved, run.logMissing}) {
    if (!note.empty()) html += fmt::format("<p>{}</p>\n", Escaped(note));
  }
  if (run.logLines.has_value()) {
    for (const std::string& line : *run.logLines) lines += Escaped(line) + "\n";
    html += fmt::format(
        "<details open><summary>{} lines came to the log {} meanwhile, other programs' perhaps among them"
        "</summary>\n<pre>{}</pre></details>\n",
        run.logLines->size(), Escaped(run.log), lines);
  }
  if (run.call.reply.has_value()) {
    html += fmt::format("<details><summary>The module's reply</summary>\n<pre>{}</pre></details>\n",
                        Escaped(*run.call.reply));
  }
  if (html.empty()) return html;
  return html + "<p class=\"onpaper faint\">The log and the module's reply are in the file, not on paper.</p>\n";
}

}  // namespace

std::string ReportPage(const RunRecord& run) {
  return fmt::format(
             "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
             "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>{}: {}</title>\n"
             "<style>\n{}{}</style>\n</head>\n<body>\n",
             Escaped(VerdictTitle(run)), Escaped(run.Tested().name), kDrawingStyle, kReportStyle) +
         Headline(run) + Checks(run) + Picture(run) + Settings(run.call.restored) + Facts(run) + Attachments(run) +
         "</body>\n</html>\n";
}

}  // namespace host
