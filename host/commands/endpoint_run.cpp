#include "host/commands/endpoint_run.h"

#include "host/endpoints/endpoint_choice.h"

namespace host {
namespace {

Limits LimitsOf(const Options& options) {
  Limits limits = options.limits;
  if (options.test == Test::kPlay || !options.render.has_value()) return limits;
  if (!limits.minPeak.has_value()) limits.minPeak = kDefaultMinPeak;
  if (!limits.maxPeak.has_value()) limits.maxPeak = kDefaultMaxPeak;
  return limits;
}

void ChooseEndpoints(const Options& options, const std::string& platform, RunRecord& run) {
  const Platform connection(platform);
  const std::vector<Endpoint> endpoints = ReadEndpoints();
  if (run.test == Test::kPlay) {
    run.render = ChooseEndpoint(endpoints, Flow::kRender, options.endpoint);
    return;
  }
  run.capture = ChooseEndpoint(endpoints, Flow::kCapture, options.endpoint);
  if (options.render.has_value()) run.render = ChooseEndpoint(endpoints, Flow::kRender, options.render);
}

}  // namespace

RunRecord RunOnEndpoints(const Options& options, const std::string& platform, Listen listen,
                         const Interruption& interruption, const Progress::Span& span) {
  RunRecord run;
  run.test = options.test;
  run.limits = LimitsOf(options);
  ChooseEndpoints(options, platform, run);
  const ContractEndpoints ids{.capture = run.capture.has_value() ? run.capture->id : "",
                              .render = run.render.has_value() ? run.render->id : ""};
  CallRequest request{.platform = platform,
                      .module = ModuleFile(options),
                      .test = run.test,
                      .contract = BuildContract(run.test, ids),
                      .listenTo = {}};
  if (listen == Listen::kYes) request.listenTo = run.Tested().id;
  RunModule(request, options, interruption, span, run);
  return run;
}

}  // namespace host
