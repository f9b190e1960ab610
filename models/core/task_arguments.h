#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// An argument of a task. The value is a text, whatever it means to the task.
class ArgumentData : public json::Record<ArgumentData> {
 public:
  std::u16string TaskArgumentName;
  std::u16string TaskArgumentValue;

  static const json::RecordTable& Table();
};

// The arguments of a task. On the wire they are an array, not an object.
class ArgumentList {
 public:
  std::vector<ArgumentData> Arguments;

  // Replaces the arguments by those of `value`, or by none if it is no array.
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
};

// Holds the arguments of a task.
class TaskArguments : public json::Record<TaskArguments> {
 public:
  std::unique_ptr<ZQ_RMT_MODELS::ArgumentList> ArgumentList;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
