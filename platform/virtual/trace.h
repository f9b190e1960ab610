#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <variant>
#include <vector>

#include "platform/core_audio.h"
#include "platform/virtual/endpoint.h"
#include "platform/virtual/operation.h"

namespace virtual_audio {

// One named argument of an operation.
struct Argument {
  const char* name;
  std::variant<std::int64_t, float, bool, IID, PROPERTYKEY> value;
};

struct TraceEntry {
  Operation operation;
  const Endpoint* endpoint;  // null for an operation that isn't on an endpoint
  std::vector<Argument> arguments;
  HRESULT status;
};

// The interface's or key's published name; of one that the machine doesn't know, the identifier in its text form.
std::string NameOf(const IID& iid);
std::string NameOf(const PROPERTYKEY& key);

}  // namespace virtual_audio
