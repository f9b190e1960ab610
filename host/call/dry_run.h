#pragma once

#include <string>
#include <unordered_map>

#include "host/call/module.h"
#include "host/contract/contract_path.h"
#include "host/contract/parsed_contract.h"

namespace host {

// The module's reply to `contract` as it is when no test is run: every value is what the module makes of the one sent,
// ReturnCode and ReturnMessage too. `contract` must have an object CoreData. Needs no platform. Throws Failure, also
// when the module doesn't take the text as JSON.
//
// A record test begins only when a contract names a device and has audio data, and AudioRecordTest reports no outcome
// otherwise, as long as there is a device record. So the module is called twice, each time with one of the two hidden,
// and each is taken from the reply to the text that shows it. Whatever the rest of the text holds, neither call has
// anything to test.
ParsedContract DryRun(const Module& module, const ParsedContract& contract);

// What the module answers for values that a contract doesn't name.
class ModuleDefaults {
 public:
  explicit ModuleDefaults(const Module& module) : module_(module) {}

  // Whether the module gives `value` at `path` also when the record or list around it is empty. Throws Failure.
  bool Gives(const Json& value, const ContractPath& path);

 private:
  const Module& module_;
  // The replies to contracts that hold nothing but one empty record or list, by their texts.
  std::unordered_map<std::string, ParsedContract> replies_;
};

}  // namespace host
