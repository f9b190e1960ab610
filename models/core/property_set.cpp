#include "models/core/property_set.h"

#include <utility>

#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {

std::int32_t PropertySet::AddProperty(PropValue value) {
  if (!GetValueByName(value.Name).empty()) return 0;
  tail_ = tail_->Append(std::move(value));
  firstByName_.emplace(tail_->Value().Name, tail_);
  return 1;
}

std::int32_t PropertySet::GetIndexByName(const std::u16string& name) const {
  const PropArray* const node = Find(name);
  return node != nullptr ? node->Index() : -1;
}

std::u16string PropertySet::GetValueByName(const std::u16string& name) const {
  const PropArray* const node = Find(name);
  return node == nullptr || node->Value().ValueArray.empty() ? std::u16string() : node->Value().ValueArray.front();
}

const PropArray* PropertySet::Find(const std::u16string& name) const {
  logging::GetModelLogger().LogDebug3(12, "Entered GetIndexByName()", 0.0);
  // A single property that is named "empty" counts as none, like a new list.
  if (head_->IsEmptyList()) return nullptr;
  const auto plain = firstByName_.find(name);
  const auto array = firstByName_.find(name + u"[]");
  if (plain == firstByName_.end()) return array == firstByName_.end() ? nullptr : array->second;
  if (array == firstByName_.end()) return plain->second;
  return plain->second->Index() < array->second->Index() ? plain->second : array->second;
}

}  // namespace ZQ_RMT_MODELS
