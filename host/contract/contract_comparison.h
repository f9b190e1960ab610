#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/base/json.h"
#include "host/contract/contract_path.h"

namespace host {

// One thing that an author of contracts may not have meant. The values belong to the trees that were compared.
struct Finding {
  std::string path;  // ContractPath::Text
  const Json* sent = nullptr;
  const Json* received = nullptr;
};

// What became of a contract on its way through the module. Each list is in the order of the text that names its paths.
struct Findings {
  std::vector<Finding> changed;     // has both values
  std::vector<Finding> dropped;     // has the one sent; what lies below it is dropped too, and not listed
  std::vector<Finding> added;       // has the one received, a default; what lies below it is not listed
  std::vector<Finding> addedOther;  // the same, but no default
  std::vector<Finding> doubled;     // has no value: a key that its object has twice or more; each is listed once

  bool HasOnlyDefaults() const;
};

// Whether a value that was received at a path where none was sent is a default.
using IsDefault = std::function<bool(const Json& value, const ContractPath& path)>;

// Compares what was sent with what was received, which must not be nested deeper than a contract's records are; what
// was sent may be. Values are the same when they are of one kind and equal: 4 isn't 4.0, but 1.50 is 1.5. Members are
// compared by key, the first of doubled ones; elements by position, with two exceptions: a list that came back with all
// its elements of one kind, and without the others, has lost the others; and a device list's Segment comes back from
// the entry on that CurrentIndex asks for.
Findings CompareContracts(const Json& sent, const Json& received, const IsDefault& isDefault);

}  // namespace host
