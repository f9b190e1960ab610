#include <fmt/format.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>

#include "host/call/guarded_call.h"
#include "host/commands/commands.h"
#include "host/commands/test_report.h"
#include "host/contract/contract_comparison.h"
#include "host/contract/contract_file.h"
#include "host/listening/passage.h"
#include "host/report/json_output.h"
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
std::string ValueJson(const rapidjson::Value& value) {
  if (value.IsObject()) return "{}";
  if (value.IsArray()) return "[]";
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  value.Accept(writer);
  return buffer.GetString();
}

std::string ValueText(const rapidjson::Value& value) {
  if (value.IsObject()) return value.ObjectEmpty() ? "{}" : "{...}";
  if (value.IsArray()) return value.Empty() ? "[]" : "[...]";
  return text::Shortened(ValueJson(value), kLongestValue);
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

std::string FindingJson(const Finding& finding) {
  JsonMembers members = {{"path", JsonString(finding.path)}};
  if (finding.sent != nullptr) members.emplace_back("before", ValueJson(*finding.sent));
  if (finding.received != nullptr) members.emplace_back("after", ValueJson(*finding.received));
  return JsonObject(members);
}

std::string Result(const Findings& findings) {
  JsonMembers members;
  for (const Group& group : kGroups) {
    std::vector<std::string> list;
    for (const Finding& finding : findings.*group.list) list.push_back(FindingJson(finding));
    members.emplace_back(group.key, JsonArray(list));
  }
  return JsonObject(members);
}

}  // namespace

Answer CheckContract(const Options& options) {
  std::string text = ReadContract(options.contract);
  if (const std::optional<JsonFault> fault = FindJsonFault(text)) {
    throw NotJson(options.contract, *fault, "Correct it there.");
  }
  const ParsedContract contract(std::move(text));
  if (contract.CoreData() == nullptr) {
    throw Failure(ExitCode::kBadInput,
                  fmt::format("'{}' is no contract: its root holds no object CoreData.", options.contract),
                  "A contract is one JSON object with the key CoreData, whose value is an object.");
  }
  return CheckGuarded({.module = ModuleFile(options), .contract = contract.Text(), .all = options.all},
                      std::chrono::duration<double>(options.timeout));
}

Answer CheckInProcess(const CheckRequest& request) {
  const ParsedContract contract(request.contract);
  const Module module(text::PathFromUtf8(request.module));
  const ParsedContract reply = PassThrough(module, contract);
  ModuleDefaults defaults(module);
  const Findings findings = CompareContracts(
      contract.Root(), reply.Root(),
      [&](const rapidjson::Value& value, const ContractPath& path) { return defaults.Gives(value, path); });

  Answer answer;
  answer.exitCode = findings.HasOnlyDefaults() ? ExitCode::kPass : ExitCode::kFail;
  answer.text = Text(findings, request.all);
  answer.result = Result(findings);
  return answer;
}

}  // namespace host
