#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace host {

enum class Test { kPlay, kRecord };

// "play" or "record".
const char* Word(Test test);
void from_json(const nlohmann::ordered_json& json, Test& test);

// The ids of endpoints as a contract names them; empty when it names none.
struct ContractEndpoints {
  std::string capture, render;
};

// The endpoints that the module uses, and whose settings it changes, in a test with this contract. Without a render
// endpoint the record test listens for three seconds.
ContractEndpoints EndpointsNamedIn(Test test, const std::string& contract);

// The data contract, as a JSON text, for a test of these endpoints.
std::string BuildContract(Test test, const ContractEndpoints& endpoints);

// What the host learns from a reply.
struct Outcome {
  int returnCode = 0;
  std::string returnMessage;
  double maxAmplitude = 0.0;  // largest absolute sample, full scale is 1.0; only a passed record test sets it
};

// Nothing when `reply` isn't JSON or holds no outcome.
std::optional<Outcome> ReadOutcome(const std::string& reply);

bool Passed(Test test, const Outcome& outcome);

// What a person can do about an outcome that isn't a pass, in a sentence or two.
std::string AdviceFor(const Outcome& outcome);

}  // namespace host
