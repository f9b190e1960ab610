#include "host/call/module_messages.h"

#include "host/base/json.h"

namespace host {

void from_json(const Json& json, InterruptionKind& kind) {
  const std::string word = json.get<std::string>();
  kind = InterruptionKind::kGap;
  while (word != Word(kind) && kind != InterruptionKind::kDisturbance) {
    kind = InterruptionKind{static_cast<int>(kind) + 1};
  }
}

}  // namespace host
