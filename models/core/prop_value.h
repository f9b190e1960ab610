#pragma once

#include <string>
#include <vector>

namespace ZQ_RMT_MODELS {

// A property as a PropArray holds it. It isn't a record, and never written.
struct PropValue {
  std::u16string Name = u"empty";
  std::u16string Qualifier = u"empty";
  std::u16string Type = u"empty";
  bool IsArray = false;
  std::vector<std::u16string> ValueArray = {u"empty"};
};

// Compares two values and returns the first difference in this order: -1 for Name, 1 for the first entry of ValueArray
// (without one it counts as empty), 2 for Qualifier, 3 for Type, 4 for IsArray, and for arrays 6 for their lengths and
// 8 for any other entry. Returns 0 if there is none.
int CompareValue(const PropValue& left, const PropValue& right);

}  // namespace ZQ_RMT_MODELS
