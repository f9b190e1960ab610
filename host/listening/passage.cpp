#include "host/listening/passage.h"

#include <algorithm>

#include "host/commands/test_report.h"
#include "host/report/json_output.h"

namespace host {
namespace {

using rapidjson::Value;

// As FindMember; what is in a value that may be changed may be changed too.
Value* Member(Value& object, std::string_view key) {
  return const_cast<Value*>(FindMember(&object, key));
}

// The record called `key` of a record in a reply, which has it when the module read the contract.
Value& Record(Value& outer, const char* key) {
  Value* record = Member(outer, key);
  if (record != nullptr && record->IsObject()) return *record;
  throw Failure(ExitCode::kBadInput, "The module doesn't read the contract: to it the text is no JSON.",
                "Look for numbers that are too big, and check with 'rmthost version' that this is the right module.");
}

// `contract` must have a record DeviceInfo. The reply has one too, then: the module keeps none of a text that it can't
// read.
ParsedContract ReplyTo(const std::string& contract, const Module& module) {
  ParsedContract reply(module.Call(Test::kRecord, contract));
  if (!reply.IsJson()) throw UnreadableReply();
  Record(Record(reply.Root(), "CoreData"), "DeviceInfo");
  return reply;
}

// A contract that holds nothing but the record or list around the value at `path`.
std::string EmptyAround(const ContractPath& path) {
  std::string opening, closing;
  for (const ContractPath::Step& step : path.Steps()) {
    const std::string_view* key = std::get_if<std::string_view>(&step);
    opening += key != nullptr ? '{' : '[';
    closing += key != nullptr ? '}' : ']';
    if (key != nullptr && &step != &path.Steps().back()) opening += JsonString(*key) + ':';
  }
  return opening.append(closing.rbegin(), closing.rend());
}

// The value at `path` of a reply to EmptyAround(path), whose lists on the way have one element. Null when there is
// none.
const Value* ValueAt(const ContractPath& path, const Value& reply) {
  const Value* value = &reply;
  for (const ContractPath::Step& step : path.Steps()) {
    if (const std::string_view* key = std::get_if<std::string_view>(&step)) {
      value = FindMember(value, *key);
    } else {
      const std::size_t index = &step == &path.Steps().back() ? std::get<std::size_t>(step) : 0;
      const bool there = value != nullptr && value->IsArray() && index < value->Size();
      value = there ? value->Begin() + index : nullptr;
    }
  }
  return value;
}

// A text, a number, a flag or a list without content, or a record of such.
bool IsBlank(const Value& value) {
  if (value.IsObject()) {
    return std::all_of(value.MemberBegin(), value.MemberEnd(),
                       [](const auto& member) { return IsBlank(member.value); });
  }
  if (value.IsArray()) return std::all_of(value.Begin(), value.End(), IsBlank);
  if (value.IsString()) return value.GetStringLength() == 0;
  return value.IsFalse() || (value.IsNumber() && value.GetDouble() == 0.0);
}

}  // namespace

ParsedContract PassThrough(const Module& module, const ParsedContract& contract) {
  const Value& core = *contract.CoreData();
  const Value* device = FindMember(&core, "DeviceInfo");
  if (device == nullptr || !device->IsObject()) {
    // The module would report the missing record in ReturnCode and ReturnMessage, and hide what became of them.
    ParsedContract reply = ReplyTo(
        core.ObjectEmpty() ? R"({"CoreData":{"DeviceInfo":{}}})" : contract.With(R"("DeviceInfo":{})", core), module);
    Record(reply.Root(), "CoreData").EraseMember("DeviceInfo");
    return reply;
  }
  if (device->ObjectEmpty()) return ReplyTo(contract.Text(), module);

  ParsedContract reply = ReplyTo(contract.With(R"("DeviceInstanceID":"")", *device), module);
  ParsedContract withId = ReplyTo(contract.With(R"("AudioData":null)", *device), module);
  Value* id = Member(Record(Record(reply.Root(), "CoreData"), "DeviceInfo"), "DeviceInstanceID");
  const Value* shown = Member(Record(Record(withId.Root(), "CoreData"), "DeviceInfo"), "DeviceInstanceID");
  if (id == nullptr || shown == nullptr || !shown->IsString()) throw UnreadableReply();
  id->SetString(shown->GetString(), shown->GetStringLength(), reply.Root().GetAllocator());
  return reply;
}

bool ModuleDefaults::Gives(const Value& value, const ContractPath& path) {
  // Nearly every default is blank, and nearly every blank value one: asking is for the others.
  if (IsBlank(value)) return true;
  const std::string text = EmptyAround(path);
  auto asked = replies_.find(text);
  if (asked == replies_.end()) {
    const ParsedContract contract(text);
    if (contract.CoreData() == nullptr) return false;
    asked = replies_.emplace(text, PassThrough(module_, contract)).first;
  }
  const Value* byDefault = ValueAt(path, asked->second.Root());
  return byDefault != nullptr && *byDefault == value;
}

}  // namespace host
