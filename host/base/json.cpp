#include "host/base/json.h"

namespace host {

Json ParseJson(std::string_view text) { return Json::parse(text); }

std::string TextOf(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

void AppendMember(std::string& object, const char* key, const std::string& value) {
  object.pop_back();
  object.append(",\"").append(key).append("\":").append(value).append("}");
}

}  // namespace host
