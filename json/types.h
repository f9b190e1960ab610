#pragma once

#include <rapidjson/document.h>

#include <memory>

#include "json/forward.h"

namespace json {

// A record that was written as JSON.
struct Serialized {
  // Owns the memory of `value` if the writer was given no document. Otherwise it is null, and the caller's document
  // owns the memory and must outlive the value.
  std::unique_ptr<Document> document;
  Value value;
};

}  // namespace json
