#include "host/call/module_messages.h"

#include "host/base/json.h"

namespace host {

static void from_json(const Json& json, Test& test) {
  test = json == Word(Test::kPlay) ? Test::kPlay : Test::kRecord;
}

namespace {

Failure NotUnderstood() {
  return {ExitCode::kBroken, "The processes of rmthost don't understand each other.",
          "Try again; if it stays, report it with what was typed."};
}

template <class Message>
Message Read(const std::string& text) {
  try {
    return Json::parse(text).get<Message>();
  } catch (const Json::exception&) {
    throw NotUnderstood();
  }
}

}  // namespace

std::string MessageText(const ModuleRequest& request) {
  return TextOf(request);
}

std::string MessageText(const CallReport& report) {
  return TextOf(report);
}

std::string MessageText(const CommandResult& result) {
  return TextOf(result);
}

ModuleRequest ReadModuleRequest(const std::string& text) {
  ModuleRequest request = Read<ModuleRequest>(text);
  if (request.call.has_value() == request.check.has_value()) throw NotUnderstood();
  return request;
}

CallReport ReadCallReport(const std::string& text) {
  CallReport report = Read<CallReport>(text);
  if (!report.called && !report.failure.has_value()) throw NotUnderstood();
  return report;
}

CommandResult ReadCommandResult(const std::string& text) {
  return Read<CommandResult>(text);
}

}  // namespace host
