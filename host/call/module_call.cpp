#include "host/call/module_call.h"

#include <chrono>
#include <optional>
#include <variant>

#include "host/analysis/analyse.h"
#include "host/base/new_file.h"
#include "host/call/module.h"
#include "host/endpoints/endpoint_choice.h"
#include "host/endpoints/platform.h"
#include "host/listening/listening.h"
#include "host/listening/wav_file.h"
#include "text/utf.h"

namespace host {
namespace {

void Report(const std::variant<CapturedSound, std::string>& listened, const CallRequest& request, CallReport& report) {
  if (const std::string* reason = std::get_if<std::string>(&listened)) {
    report.notHeard = *reason;
    return;
  }
  const CapturedSound& sound = std::get<CapturedSound>(listened);
  report.findings = AnalyseRecording(sound.recording);
  const std::vector<std::vector<float>>& channels = sound.recording.channels;
  if (!channels.empty()) {
    report.heard = Summarise(channels[report.findings->referenceChannel], sound.recording.rate);
  }
  if (!request.saveTo.has_value() || sound.frames.empty()) return;
  const std::error_code error = OverwriteFile(text::PathFromUtf8(*request.saveTo), WavFile(sound));
  report.saved = !error;
  if (error) report.notSaved = error.message();
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
    if (request.listenTo.has_value()) {
      listening.emplace(request.platform, *request.listenTo,
                        request.saveTo.has_value() ? Kept::kFramesToo : Kept::kSamples);
    }

    report.called = true;
    const auto start = std::chrono::steady_clock::now();
    try {
      report.reply = module.Call(request.test, request.contract);
    } catch (const Failure& failure) {
      report.failure = failure;
    }
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    if (!HasPassed(request.test, report.reply)) report.refused = LastRefusedOperation();
    if (listening.has_value()) Report(listening->Finish(), request, report);
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
