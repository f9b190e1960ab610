#include "host/call/module_call.h"

#include <chrono>
#include <optional>
#include <variant>

#include "host/analysis/analyse.h"
#include "host/call/module.h"
#include "host/endpoints/endpoint_choice.h"
#include "host/endpoints/platform.h"
#include "host/listening/listening.h"
#include "text/utf.h"

namespace host {
namespace {

void Report(const std::variant<Recording, std::string>& listened, CallReport& report) {
  if (const std::string* reason = std::get_if<std::string>(&listened)) {
    report.notHeard = *reason;
    return;
  }
  const Recording& recording = std::get<Recording>(listened);
  report.findings = AnalyseRecording(recording);
  report.heard = SummariseLoudest(recording);
}

bool HasPassed(Test test, const std::optional<std::string>& reply) {
  const std::optional<Outcome> outcome = reply.has_value() ? ReadOutcome(*reply) : std::nullopt;
  return outcome.has_value() && Passed(test, *outcome);
}

}  // namespace

CallReport CallHere(const CallRequest& request) {
  CallReport report;
  try {
    const Platform platform(request.platform);
    const bool endsWithProcess = EndsWithProcess(request.platform);
    std::vector<Endpoint> saved;
    if (endsWithProcess) saved = ReachedEndpoints(ReadEndpoints(), request);
    const Module module(text::PathFromUtf8(request.module));
    std::optional<Listening> listening;
    if (request.listenTo.has_value()) listening.emplace(request.platform, *request.listenTo);

    report.called = true;
    const auto start = std::chrono::steady_clock::now();
    try {
      report.reply = module.Call(request.test, request.contract);
    } catch (const Failure& failure) {
      report.failure = failure;
    }
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    if (!HasPassed(request.test, report.reply)) report.refused = LastRefusedOperation();
    if (listening.has_value()) Report(listening->Finish(), report);
    if (endsWithProcess) report.restored = PutBack(saved);
  } catch (const Failure& failure) {
    report.failure = failure;
  }
  return report;
}

std::vector<Endpoint> ReachedEndpoints(const std::vector<Endpoint>& endpoints, const CallRequest& request) {
  const ContractEndpoints named = EndpointsNamedIn(request.test, request.contract);
  std::vector<Endpoint> reached;
  const auto add = [&](Flow flow, const std::string& id) {
    if (const Endpoint* endpoint = ReachedEndpoint(endpoints, flow, id)) reached.push_back(*endpoint);
  };
  add(Flow::kCapture, named.capture);
  add(Flow::kRender, named.render);
  return reached;
}

}  // namespace host
