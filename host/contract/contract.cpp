#include "host/contract/contract.h"

#include <fmt/core.h>

#include "audiotests/zqrmt_return_codes.h"
#include "host/contract/parsed_contract.h"

namespace host {
namespace {

std::string IdIn(const Json* record, const char* key) {
  const Json* id = FindMember(record, key);
  return id != nullptr && id->is_string() ? id->get<std::string>() : std::string();
}

const Json* AudioDataIn(const Json* core) { return FindMember(FindMember(core, "DeviceInfo"), "AudioData"); }

}  // namespace

const char* Word(Test test) { return test == Test::kPlay ? "play" : "record"; }

void from_json(const Json& json, Test& test) { test = json == Word(Test::kPlay) ? Test::kPlay : Test::kRecord; }

ContractEndpoints EndpointsNamedIn(Test test, const std::string& contract) {
  const ParsedContract parsed(contract);
  const Json* core = parsed.CoreData();
  const std::string id = IdIn(FindMember(core, "DeviceInfo"), "DeviceInstanceID");
  if (test == Test::kPlay) return {.capture = "", .render = id};
  return {.capture = id, .render = IdIn(AudioDataIn(core), "targetDevice")};
}

std::string BuildContract(Test test, const ContractEndpoints& endpoints) {
  const bool plays = test == Test::kPlay;
  Json device = {{"DeviceInstanceID", plays ? endpoints.render : endpoints.capture}};
  if (!plays) device["AudioData"] = {{"targetDevice", endpoints.render}};
  return TextOf({{"CoreData", {{"DeviceInfo", device}}}});
}

std::optional<Outcome> ReadOutcome(const std::string& reply) {
  const ParsedContract parsed(reply);
  const Json* core = parsed.CoreData();
  const std::optional<int> code = IntIn(FindMember(core, "ReturnCode"));
  const Json* message = FindMember(core, "ReturnMessage");
  if (!code.has_value() || message == nullptr || !message->is_string()) return std::nullopt;
  const Json* amplitude = FindMember(AudioDataIn(core), "maxAmplitude");
  return Outcome{.returnCode = *code,
                 .returnMessage = message->get<std::string>(),
                 .maxAmplitude = amplitude != nullptr && amplitude->is_number() ? amplitude->get<double>() : 0.0};
}

bool Passed(Test test, const Outcome& outcome) {
  return outcome.returnCode == (test == Test::kRecord ? ZQRMT_RETURN_RECORD_PASSED : ZQRMT_RETURN_PLAYBACK_PASSED);
}

std::string AdviceFor(const Outcome& outcome) {
  switch (outcome.returnCode) {
    case ZQRMT_RETURN_NO_ENDPOINT:
      return "No active endpoint has that id: check that it is plugged in and enabled; 'rmthost list' shows the "
             "endpoints.";
    case ZQRMT_RETURN_PLATFORM:
      return "The audio system refused an operation: check that no program holds an endpoint exclusively, and that the "
             "system has a default render endpoint, which every test needs, and a default capture endpoint, which a "
             "record test needs.";
    case ZQRMT_RETURN_BAD_INPUT:
      return "The contract isn't JSON, or names no endpoint: DeviceInstanceID of DeviceInfo takes the endpoint's id.";
    case ZQRMT_RETURN_NO_MEMORY:
      return "The module found no memory for the capture: close other programs and try again.";
    case ZQRMT_RETURN_TOO_MUCH_SOUND:
      return "The capture is larger than the module's store: set the capture endpoint to fewer channels or a lower "
             "rate.";
    case 0:
      return "No outcome was reported: either the contract names no endpoint (DeviceInstanceID of DeviceInfo and, for "
             "a record test, AudioData in it), or a level flag file (*.flg) in the log directory hides it.";
    default:
      return fmt::format(
          "The code {} is no outcome of this test: one in the contract given, or a level flag file (*.flg) "
          "in the log directory, can hide the outcome.",
          outcome.returnCode);
  }
}

}  // namespace host
