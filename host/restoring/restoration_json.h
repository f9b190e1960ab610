#pragma once

#include <vector>

#include "host/base/json.h"
#include "host/restoring/left_runs.h"

// As docs/rmthost-json.md has them.
namespace host {

inline Json ResultJson(const Restoration& restoration) {
  Json json = {{"state", Word(restoration.Summary())}};
  json.update(Json(restoration));
  return json;
}

inline Json ResultJson(const std::vector<LeftRun>& runs) {
  Json list = Json::array();
  for (const LeftRun& run : runs) {
    Json& json = list.emplace_back(run);
    if (run.restored.has_value()) json["restored"] = ResultJson(*run.restored);
  }
  return list;
}

}  // namespace host
