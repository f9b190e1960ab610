#include "host/call/module_request.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <fmt/format.h>

#include "host/contract/parsed_contract.h"
#include "host/report/json_output.h"
#include "host/report/json_reading.h"

namespace host {
namespace {

using rapidjson::Value;

Failure NotUnderstood() {
  return {ExitCode::kBroken, "The processes of rmthost don't understand each other.",
          "Try again; if it stays, report it with what was typed."};
}

rapidjson::Document Parse(const std::string& text) {
  rapidjson::Document document;
  document.Parse(text.data(), text.size());
  if (document.HasParseError() || !document.IsObject()) throw NotUnderstood();
  return document;
}

const Value* ObjectIn(const Value& object, const char* key) {
  const Value* member = FindMember(&object, key);
  return member != nullptr && member->IsObject() ? member : nullptr;
}

std::string TextOf(const Value& value) {
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  value.Accept(writer);
  return buffer.GetString();
}

// Candidates don't occur: endpoints are chosen before the module has a process.
std::optional<Failure> FailureIn(const Value& object) {
  const Value* failure = ObjectIn(object, "failure");
  if (failure == nullptr) return std::nullopt;
  return Failure(static_cast<ExitCode>(static_cast<int>(NumberIn(*failure, "exitCode"))), TextIn(*failure, "message"),
                 TextIn(*failure, "advice"));
}

std::string JsonOf(const CallRequest& request) {
  return JsonObject({{"platform", JsonString(request.platform)},
                     {"module", JsonString(request.module)},
                     {"test", JsonString(TestWord(request.test))},
                     {"contract", JsonString(request.contract)},
                     {"listenTo", JsonString(request.listenTo)}});
}

std::string JsonOf(const CheckRequest& request) {
  return JsonObject({{"check", "true"},
                     {"module", JsonString(request.module)},
                     {"contract", JsonString(request.contract)},
                     {"all", JsonBool(request.all)}});
}

}  // namespace

std::string RequestJson(const ModuleRequest& request) {
  return std::visit([](const auto& asked) { return JsonOf(asked); }, request);
}

std::string CallReportJson(const CallReport& report) {
  JsonMembers members = {{"called", JsonBool(report.called)}, {"notHeard", JsonString(report.notHeard)}};
  if (report.reply.has_value()) members.emplace_back("reply", JsonString(*report.reply));
  if (report.seconds.has_value()) members.emplace_back("seconds", JsonNumber(*report.seconds));
  if (!report.heard.empty()) members.emplace_back("heard", report.heard);
  if (report.restoration.has_value()) members.emplace_back("restored", RestorationJson(*report.restoration));
  if (report.failure.has_value()) members.emplace_back("failure", FailureJson(*report.failure));
  return JsonObject(members);
}

std::string AnswerJson(const Answer& answer) {
  JsonMembers members = {{"exitCode", fmt::to_string(static_cast<int>(answer.exitCode))},
                         {"text", JsonString(answer.text)},
                         {"result", JsonString(answer.result)}};
  if (answer.failure.has_value()) members.emplace_back("failure", FailureJson(*answer.failure));
  return JsonObject(members);
}

ModuleRequest ReadRequest(const std::string& text) {
  const rapidjson::Document document = Parse(text);
  if (FlagIn(document, "check")) {
    return CheckRequest{
        .module = TextIn(document, "module"), .contract = TextIn(document, "contract"), .all = FlagIn(document, "all")};
  }
  return CallRequest{.platform = TextIn(document, "platform"),
                     .module = TextIn(document, "module"),
                     .test = TextIn(document, "test") == TestWord(Test::kPlay) ? Test::kPlay : Test::kRecord,
                     .contract = TextIn(document, "contract"),
                     .listenTo = TextIn(document, "listenTo")};
}

CallReport ReadCallReport(const std::string& text) {
  const rapidjson::Document document = Parse(text);
  CallReport report;
  report.called = FlagIn(document, "called");
  if (document.HasMember("reply")) report.reply = TextIn(document, "reply");
  if (document.HasMember("seconds")) report.seconds = NumberIn(document, "seconds");
  if (const Value* heard = ObjectIn(document, "heard")) report.heard = TextOf(*heard);
  report.notHeard = TextIn(document, "notHeard");
  if (const Value* restored = ObjectIn(document, "restored")) report.restoration = ReadRestoration(*restored);
  report.failure = FailureIn(document);
  if (!report.called && !report.failure.has_value()) throw NotUnderstood();
  return report;
}

Answer ReadAnswer(const std::string& text) {
  const rapidjson::Document document = Parse(text);
  Answer answer;
  answer.exitCode = static_cast<ExitCode>(static_cast<int>(NumberIn(document, "exitCode")));
  answer.text = TextIn(document, "text");
  answer.result = TextIn(document, "result");
  answer.failure = FailureIn(document);
  return answer;
}

}  // namespace host
