#include "host/report/json_reading.h"

#include "host/contract/parsed_contract.h"

namespace host {

using rapidjson::Value;

std::string TextIn(const Value& object, const char* key) {
  const Value* text = FindMember(&object, key);
  return text != nullptr && text->IsString() ? std::string(text->GetString(), text->GetStringLength()) : std::string();
}

double NumberIn(const Value& object, const char* key) {
  const Value* number = FindMember(&object, key);
  return number != nullptr && number->IsNumber() ? number->GetDouble() : 0.0;
}

bool FlagIn(const Value& object, const char* key) {
  const Value* flag = FindMember(&object, key);
  return flag != nullptr && flag->IsTrue();
}

Value::ConstArray ListIn(const Value& object, const char* key) {
  static const Value empty(rapidjson::kArrayType);
  const Value* list = FindMember(&object, key);
  return (list != nullptr && list->IsArray() ? *list : empty).GetArray();
}

}  // namespace host
