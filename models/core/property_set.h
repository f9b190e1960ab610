#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "models/core/prop_array.h"

namespace ZQ_RMT_MODELS {

// A lookup of properties by name over a PropArray list. Adding and finding take constant time.
class PropertySet {
 public:
  PropertySet() = default;
  PropertySet(const PropertySet&) = delete;
  PropertySet& operator=(const PropertySet&) = delete;
  ~PropertySet() { PropArray::Destroy(head_); }

  // Adds `value` and returns 1. If there is a property of that name whose first entry isn't empty, returns 0 and adds
  // nothing.
  std::int32_t AddProperty(PropValue value);

  // The position of the first property that is named `name`, or `name` followed by "[]". -1 if there is none.
  std::int32_t GetIndexByName(const std::u16string& name) const;

  // The first entry of that property's values. Empty if there is no such property or it has no values.
  std::u16string GetValueByName(const std::u16string& name) const;

  // The number of properties; -1 when there are none.
  std::int32_t Count() const { return head_->Count(); }

 private:
  const PropArray* Find(const std::u16string& name) const;

  PropArray* const head_ = new PropArray;
  PropArray* tail_ = head_;
  // The nodes own the names.
  std::unordered_map<std::u16string_view, const PropArray*> firstByName_;
};

}  // namespace ZQ_RMT_MODELS
