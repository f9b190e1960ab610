#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// One argument of a task: a name and a value, both text whatever they mean to the task.
struct ArgumentData {
  std::u16string TaskArgumentName;
  std::u16string TaskArgumentValue;

  // Reads an element of the list. A key that it lacks leaves its member as it was.
  void Deserialize(const json::Value& element);
  // Makes `out` the object of the pair.
  void Serialize(json::Value& out, json::Document& document) const;
};

// A task's arguments, an array on the wire.
class ArgumentList {
 public:
  std::vector<ArgumentData> Arguments;

  // A `value` that is no array is an empty one.
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

class TaskArguments {
 public:
  std::unique_ptr<ZQ_RMT_MODELS::ArgumentList> ArgumentList;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

}  // namespace ZQ_RMT_MODELS
