#include "host/call/dry_run.h"

#include <algorithm>
#include <utility>

namespace host {
namespace {

// The record called `key` of a record in a reply, which has it when the module read the contract.
Json& Record(Json& outer, const char* key) {
  Json* record = FindMember(&outer, key);
  if (record != nullptr && record->is_object()) return *record;
  throw Failure(ExitCode::kBadInput, "The module doesn't read the contract: to it the text is no JSON.",
                "Look for numbers that are too big, and check with 'rmthost version' that this is the right module.");
}

// `contract` must have a record DeviceInfo. The reply has one too, then: the module keeps none of a text that it can't
// read.
ParsedContract ReplyTo(const std::string& contract, const Module& module) {
  ParsedContract reply(module.Call(Test::kRecord, contract));
  if (reply.Fault().has_value()) throw UnreadableReply();
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
    if (key != nullptr && &step != &path.Steps().back()) opening += TextOf(*key) + ':';
  }
  return opening.append(closing.rbegin(), closing.rend());
}

// The value at `path` of a reply to EmptyAround(path), whose lists on the way have one element. Null when there is
// none.
const Json* ValueAt(const ContractPath& path, const Json& reply) {
  const Json* value = &reply;
  for (const ContractPath::Step& step : path.Steps()) {
    if (const std::string_view* key = std::get_if<std::string_view>(&step)) {
      value = FindMember(value, *key);
      continue;
    }
    const std::size_t index = &step == &path.Steps().back() ? std::get<std::size_t>(step) : 0;
    const bool isThere = value != nullptr && value->is_array() && index < value->size();
    value = isThere ? &(*value)[index] : nullptr;
  }
  return value;
}

// A text, a number, a flag or a list without content, or a record of such.
bool IsBlank(const Json& value) {
  if (value.is_structured()) return std::all_of(value.begin(), value.end(), IsBlank);
  if (value.is_string()) return value.get_ref<const std::string&>().empty();
  return value == false || value == 0;
}

}  // namespace

ParsedContract DryRun(const Module& module, const ParsedContract& contract) {
  const Json* core = contract.CoreData();
  const Json* device = FindMember(core, "DeviceInfo");
  if (device == nullptr || !device->is_object()) {
    // The module would report the missing record in ReturnCode and ReturnMessage, and hide what became of them.
    ParsedContract reply = ReplyTo(
        core->empty() ? R"({"CoreData":{"DeviceInfo":{}}})" : contract.WithInCoreData(R"("DeviceInfo":{})"), module);
    Record(reply.Root(), "CoreData").erase("DeviceInfo");
    return reply;
  }
  if (device->empty()) return ReplyTo(contract.Text(), module);

  ParsedContract reply = ReplyTo(contract.WithInDeviceInfo(R"("DeviceInstanceID":"")"), module);
  ParsedContract withId = ReplyTo(contract.WithInDeviceInfo(R"("AudioData":null)"), module);
  Json* id = FindMember(&Record(Record(reply.Root(), "CoreData"), "DeviceInfo"), "DeviceInstanceID");
  Json* shown = FindMember(&Record(Record(withId.Root(), "CoreData"), "DeviceInfo"), "DeviceInstanceID");
  if (id == nullptr || shown == nullptr || !shown->is_string()) throw UnreadableReply();
  *id = std::move(*shown);
  return reply;
}

bool ModuleDefaults::Gives(const Json& value, const ContractPath& path) {
  // Nearly every default is blank, and nearly every blank value one: asking is for the others.
  if (IsBlank(value)) return true;
  const std::string text = EmptyAround(path);
  auto asked = replies_.find(text);
  if (asked == replies_.end()) {
    const ParsedContract contract(text);
    if (contract.CoreData() == nullptr) return false;
    asked = replies_.emplace(text, DryRun(module_, contract)).first;
  }
  const Json* byDefault = ValueAt(path, asked->second.Root());
  return byDefault != nullptr && *byDefault == value;
}

}  // namespace host
