#pragma once

#include <string>
#include <vector>

namespace ZQ_RMT_MODELS {

// A property as a PropArray holds it. It has no form on the wire.
struct PropValue {
  std::u16string Name = u"empty";
  std::u16string Qualifier = u"empty";
  std::u16string Type = u"empty";
  bool IsArray = false;
  std::vector<std::u16string> ValueArray = {u"empty"};
};

// The first difference of two values: -1 Name, 1 the first entries of ValueArray (no entry counts as the empty text),
// 2 Qualifier, 3 Type, 4 IsArray, and of arrays 6 the lengths, 8 some entry. 0: none.
int CompareValue(const PropValue& left, const PropValue& right);

}  // namespace ZQ_RMT_MODELS
