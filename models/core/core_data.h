#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "json/record.h"
#include "models/core/device_info.h"
#include "models/core/diagnostic_info.h"
#include "models/core/driver_info_list.h"
#include "models/core/event_logger_data.h"
#include "models/core/software_info.h"
#include "models/core/state_info.h"
#include "models/core/task_arguments.h"
#include "models/core/ui_rendering.h"

namespace ZQ_RMT_MODELS {

// The record under the contract's root: the identity of the task, its outcome, and the nested records.
class CoreData : public json::Record<CoreData> {
 public:
  std::u16string TimeStamp;
  std::u16string TaskName;
  std::u16string TaskID;
  std::u16string TaskVersion;
  std::int32_t ReturnCode = 0;   // the code of the outcome's log line; 0 if none was reported
  std::u16string ReturnMessage;  // the text of that line
  std::u16string Result;         // Result and Status come back as they were sent
  std::u16string Status;
  std::unique_ptr<ZQ_RMT_MODELS::DeviceInfo> DeviceInfo;
  std::unique_ptr<ZQ_RMT_MODELS::SoftwareInfo> SoftwareInfo;
  std::unique_ptr<ZQ_RMT_MODELS::DiagnosticInfo> DiagnosticInfo;
  std::unique_ptr<ZQ_RMT_MODELS::UIRendering> UIRendering;
  std::unique_ptr<ZQ_RMT_MODELS::EventLoggerData> EventLoggerData;
  std::unique_ptr<ZQ_RMT_MODELS::StateInfo> StateInfo;
  std::unique_ptr<ZQ_RMT_MODELS::TaskArguments> TaskArguments;
  std::unique_ptr<ZQ_RMT_MODELS::DriverInfoList> DriverInfoList;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
