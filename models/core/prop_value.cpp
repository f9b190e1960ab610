#include "models/core/prop_value.h"

namespace ZQ_RMT_MODELS {
namespace {

std::u16string FirstEntry(const PropValue& value) {
  return value.ValueArray.empty() ? std::u16string() : value.ValueArray.front();
}

}  // namespace

int CompareValue(const PropValue& left, const PropValue& right) {
  if (left.Name != right.Name) return -1;
  if (FirstEntry(left) != FirstEntry(right)) return 1;
  if (left.Qualifier != right.Qualifier) return 2;
  if (left.Type != right.Type) return 3;
  if (left.IsArray != right.IsArray) return 4;
  if (!left.IsArray) return 0;
  if (left.ValueArray.size() != right.ValueArray.size()) return 6;
  return left.ValueArray == right.ValueArray ? 0 : 8;
}

}  // namespace ZQ_RMT_MODELS
