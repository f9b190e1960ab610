#include "host/report/run_json.h"

#include "host/base/json.h"
#include "host/base/text_output.h"
#include "host/restoring/restoration_json.h"

namespace host {
namespace {

Json EndpointJson(const std::optional<Endpoint>& endpoint) {
  if (!endpoint.has_value()) return nullptr;
  return {{"id", endpoint->id}, {"name", endpoint->name}};
}

void AddOutcome(const RunRecord& run, Json& json) {
  if (!run.outcome.has_value()) return;
  json["returnCode"] = run.outcome->returnCode;
  json["returnMessage"] = run.outcome->returnMessage;
  json["advice"] = run.Passed() ? Json() : Json(run.verdict.advice);
}

void AddCall(const RunRecord& run, Json& json) {
  json["seconds"] = run.call.seconds;
  json["restored"] = ResultJson(run.call.restored);
  json["log"] = run.log;
  json["logMoved"] = run.logMoved.empty() ? Json() : Json(run.logMoved);
  json["logMissing"] = run.logMissing.empty() ? Json() : Json(run.logMissing);
  if (run.logLines.has_value()) json["logLines"] = *run.logLines;
}

void AddRun(const RunRecord& run, Json& json) {
  if (run.outcome.has_value()) {
    json["passed"] = run.Passed();
    json["verdict"] = run.verdict.word;
    json["reason"] = run.Passed() ? Json() : Json(run.verdict.sentence);
  }
  AddOutcome(run, json);
  json["render"] = EndpointJson(run.render);
  if (run.test == Test::kRecord) {
    json["capture"] = EndpointJson(run.capture);
    json["caution"] = run.verdict.caution.empty() ? Json() : Json(run.verdict.caution);
    json["checks"] = run.verdict.checks;
    json["limits"] = run.limits;
    json["maxAmplitude"] = run.Peak();
    json["maxAmplitudeDbfs"] = run.Peak().has_value() ? Json(Decibels(*run.Peak())) : Json();
  }
  AddCall(run, json);
}

// The reply goes in as the module wrote it: its numbers, read and written again, might be other texts. Only what was
// found to be JSON, and to tell an outcome, can.
std::string WithReply(const Json& json, const RunRecord& run) {
  std::string text = TextOf(json);
  if (run.outcome.has_value()) AppendMember(text, "reply", *run.call.reply);
  return text;
}

}  // namespace

std::string RunJson(const std::string& platform, const RunRecord& run, bool plotData) {
  Json json = {{"platform", platform}};
  AddRun(run, json);
  json["report"] = run.report;
  json["junit"] = run.junit;
  if (run.test == Test::kRecord) {
    json["findings"] = run.call.findings;
    json["notHeard"] = run.call.notHeard;
    json["plot"] = run.plot;
    json["save"] = run.save;
    if (plotData) json["plotData"] = run.call.heard;
  }
  return WithReply(json, run);
}

std::string ContractRunJson(const std::string& platform, const RunRecord& run) {
  Json json = {{"platform", platform}};
  json["test"] = run.test;
  if (run.outcome.has_value()) json["passed"] = run.Passed();
  AddOutcome(run, json);
  AddCall(run, json);
  return WithReply(json, run);
}

std::string RunOfSeriesJson(const RunRecord& run) {
  Json json = Json::object();
  AddRun(run, json);
  if (run.failure.has_value()) json["error"] = *run.failure;
  return TextOf(json);
}

}  // namespace host
