#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// The software that a task concerns.
class SoftwareInfo : public json::Record<SoftwareInfo> {
 public:
  std::u16string ProductName;
  std::u16string LibraryList;
  std::vector<std::int32_t> VersionInfo;  // the parts of a version number
  std::u16string SignatureInfo;
  std::u16string BuildDate;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
