#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// A keyboard and the keys that were pressed on it. -1 stands for not set.
class KeyboardData : public json::Record<KeyboardData> {
 public:
  std::int32_t CommandExecuted = -1;
  std::int32_t KybdConfiguration = -1;
  std::int32_t KybdLayout = -1;
  std::int32_t TotalNumberOfKeys = -1;
  // Key codes in hexadecimal, as texts that nothing here converts.
  std::vector<std::u16string> hexValuesPressed;
  std::vector<std::u16string> hexValuesReleased;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
