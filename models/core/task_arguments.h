#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/forward.h"

namespace ZQ_RMT_MODELS {

// One argument of a task: a name and a value, both text whatever they mean to the task.
class ArgumentData {
 public:
  std::u16string TaskArgumentName;
  std::u16string TaskArgumentValue;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
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
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
