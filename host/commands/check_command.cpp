#include <fmt/core.h>

#include <algorithm>

#include "host/call/dry_run.h"
#include "host/call/guarded_call.h"
#include "host/commands/commands.h"
#include "host/commands/guarded_run.h"
#include "host/contract/contract_comparison.h"
#include "host/contract/contract_file.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr std::size_t kFewFindings = 20;
constexpr std::size_t kLongestValue = 60;  // bytes

// A kind of finding, as it is shown.
struct Group {
  const char* key;    // in JSON
  const char* title;  // for a person
  std::vector<Finding> Findings::*list;
};

constexpr Group kGroups[] = {
    {"changed", "came back changed", &Findings::changed},
    {"dropped", "dropped", &Findings::dropped},
    {"addedOther", "added, but not with the default", &Findings::addedOther},
    {"doubled", "named twice, and the first one taken", &Findings::doubled},
    {"added", "added with the default", &Findings::added},
};

// An object or array without what is in it: its nesting can be of any depth.
Json Shown(const Json& value) {
  if (value.is_object()) return Json::object();
  return value.is_array() ? Json::array() : value;
}

std::string ValueText(const Json& value) {
  if (value.is_object()) return value.empty() ? "{}" : "{...}";
  if (value.is_array()) return value.empty() ? "[]" : "[...]";
  return text::Shortened(TextOf(value), kLongestValue);
}

std::string Line(const Finding& finding) {
  std::string line = "  " + finding.path;
  if (finding.sent != nullptr) line += "  " + ValueText(*finding.sent);
  if (finding.sent != nullptr && finding.received != nullptr) line += "  ->";
  if (finding.received != nullptr) line += "  " + ValueText(*finding.received);
  return text::Printable(line) + "\n";
}

std::string Text(const Findings& findings, bool all) {
  std::string text = findings.HasOnlyDefaults() ? "The contract comes back as it is, but for added defaults.\n"
                                                : "The contract doesn't come back as it is.\n";
  if (findings.HasOnlyDefaults() && findings.added.empty()) text = "The contract comes back as it is.\n";
  for (const Group& group : kGroups) {
    const std::vector<Finding>& list = findings.*group.list;
    if (list.empty()) continue;
    text += fmt::format("\n{} {}:\n", list.size(), group.title);
    const std::size_t shown = all ? list.size() : std::min(list.size(), kFewFindings);
    for (std::size_t i = 0; i < shown; ++i) text += Line(list[i]);
    if (shown < list.size()) text += fmt::format("  and {} more, which --all shows\n", list.size() - shown);
  }
  return text;
}

Json FindingJson(const Finding& finding) {
  Json json = {{"path", finding.path}};
  if (finding.sent != nullptr) json["before"] = Shown(*finding.sent);
  if (finding.received != nullptr) json["after"] = Shown(*finding.received);
  return json;
}

std::string FindingsJson(const Findings& findings) {
  Json json;
  for (const Group& group : kGroups) {
    Json& list = json[group.key] = Json::array();
    for (const Finding& finding : findings.*group.list) list.push_back(FindingJson(finding));
  }
  return TextOf(json);
}

// Throws Failure.
Findings FindingsOf(const ParsedContract& contract, const ParsedContract& reply, const Module& module) {
  ModuleDefaults defaults(module);
  return CompareContracts(contract.Root(), reply.Root(),
                          [&](const Json& value, const ContractPath& path) { return defaults.Gives(value, path); });
}

}  // namespace

CommandResult CheckContract(const Options& options) {
  const ParsedContract contract(ReadContract(options.contract));
  if (contract.Fault().has_value()) throw NotJson(options.contract, *contract.Fault(), "Correct it there.");
  if (contract.CoreData() == nullptr) {
    throw Failure(ExitCode::kBadInput,
                  fmt::format("'{}' is no contract: its root holds no object CoreData.", options.contract),
                  "A contract is one JSON object with the key CoreData, whose value is an object.");
  }
  return CheckGuarded({.module = ModuleFile(options), .contract = contract.Text(), .all = options.all},
                      std::chrono::duration<double>(options.timeout));
}

CommandResult CheckHere(const CheckRequest& request) {
  CommandResult result;
  try {
    const ParsedContract contract(request.contract);
    const Module module(text::PathFromUtf8(request.module));
    const ParsedContract reply = DryRun(module, contract);
    const Findings findings = FindingsOf(contract, reply, module);
    result.exitCode = findings.HasOnlyDefaults() ? ExitCode::kPass : ExitCode::kFail;
    result.text = Text(findings, request.all);
    result.json = FindingsJson(findings);
  } catch (const Failure& failure) {
    result.exitCode = failure.exitCode;
    result.failure = failure;
  }
  return result;
}

}  // namespace host
