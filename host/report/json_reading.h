#pragma once

#include <rapidjson/document.h>

#include <string>

namespace host {

// Members of JSON objects that one process of rmthost hands to another, leniently: a member that is missing or of
// another kind, also of a value that is no object, is an empty text, zero, false, or an empty list.
std::string TextIn(const rapidjson::Value& object, const char* key);
double NumberIn(const rapidjson::Value& object, const char* key);
bool FlagIn(const rapidjson::Value& object, const char* key);
rapidjson::Value::ConstArray ListIn(const rapidjson::Value& object, const char* key);

}  // namespace host
