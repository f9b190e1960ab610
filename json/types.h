#pragma once

#include <rapidjson/document.h>

#include <memory>

#include "json/forward.h"

namespace json {

// A record that was written as JSON.
struct Serialized {
  // The memory of `value`, set only when the writer was given no document and had to make one of its own. Otherwise the
  // value lives in the caller's document, which must outlive it.
  std::unique_ptr<Document> document;
  Value value;
};

}  // namespace json
