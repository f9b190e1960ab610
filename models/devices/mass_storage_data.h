#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "json/forward.h"
#include "models/devices/smart_attribute.h"
#include "models/devices/storage_device_info.h"

namespace ZQ_RMT_MODELS {

// One disk: its identity, its SMART attributes, and the counters, times and last errors of a read test or a self-test.
class MassStorageData {
 public:
  std::unique_ptr<STORAGE_DEVICE_INFO> di;
  std::vector<SMART_ATTRIBUTE> smartAttributes;
  std::int32_t readCount = -1;
  std::int32_t pollingTimeoutPercentGracePeriod = 50;
  // The times of a self-test. The wire names no unit.
  std::int32_t pollTime = 0;
  std::int32_t testTime = 0;
  std::int32_t maxAllowedTime = 0;
  // An entry of the disk's self-test log, whose fields have the widths that the ATA command set publishes.
  std::int32_t execStatusNibble = 0;  // four bits of the status: how the self-test ended
  std::uint32_t failingLba = 0;       // where it failed
  std::uint16_t lifeTimestamp = 0;    // in hours of power-on time
  std::uint8_t selfTestStatus = 0;
  std::uint8_t lba = 0;  // the low byte of the LBA register, which names the kind of self-test
  std::int32_t latestIndex = 0;
  // The errors of the system's read operations.
  std::int32_t readGetLastErrorNumber = 0;
  std::u16string readGetLastErrorMessage;
  std::int32_t readFileExOverlappedErrorCode = 0;
  std::int32_t numberOfBytesTransferred = 0;
  std::int32_t overlappedOffset = 0;
  std::int32_t overlappedOffsetHigh = 0;
  // What the ATA command SMART RETURN STATUS gives: 4Fh and C2h for a healthy disk, F4h and 2Ch for a threshold
  // exceeded.
  std::int32_t cylinderLowRegister = 0;
  std::int32_t cylinderHighRegister = 0;
  std::u16string Type;
  std::u16string PassThrough;
  // Texts, although they answer a question.
  std::u16string IsNVMeRST;
  std::u16string IsNVMeDSTSupport;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
