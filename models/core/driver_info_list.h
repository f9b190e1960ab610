#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json/record.h"

namespace ZQ_RMT_MODELS {

// One driver update.
class DriverInformation {
 public:
  std::u16string Title;
  std::u16string Description;
  std::u16string DriverModel;
  std::u16string DriverClass;
  std::u16string DriverManufacturer;
  std::int32_t Type = 0;
  std::u16string UninstallationNotes;
  std::u16string SupportUrl;
  bool IsPresent = false;
  bool IsDownloaded = false;
  bool IsInstalled = false;
  bool RebootRequired = false;
  std::u16string UpdateID;
  std::u16string CurrentVersion;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

// The driver updates of a machine.
class DriverInfoList : public json::Record<DriverInfoList> {
 public:
  std::int32_t TotalUpdatesCount = 0;
  std::vector<std::u16string> Title;
  std::vector<DriverInformation> DriverinformationList;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
