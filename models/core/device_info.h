#pragma once

#include <memory>
#include <string>

#include "json/record.h"
#include "models/core/audio_data.h"
#include "models/core/dev_list.h"
#include "models/core/dev_properties.h"
#include "models/devices/battery_data.h"
#include "models/devices/camera_data.h"
#include "models/devices/cpu_data.h"
#include "models/devices/keyboard_data.h"
#include "models/devices/mass_storage_data.h"
#include "models/devices/motherboard_data.h"
#include "models/devices/mouse_data.h"
#include "models/devices/nic_data.h"
#include "models/devices/registry_access_data.h"
#include "models/devices/video_data.h"

namespace ZQ_RMT_MODELS {

// The device that a task is about: what identifies it, and a nested record for each family of devices.
class DeviceInfo : public json::Record<DeviceInfo> {
 public:
  std::u16string DeviceID;
  // For the playback test the id of the render endpoint, for the record test that of the capture endpoint.
  std::u16string DeviceInstanceID;
  std::u16string Name;
  std::u16string DUID;
  std::u16string Type;
  std::unique_ptr<ZQ_RMT_MODELS::AudioData> AudioData;
  std::unique_ptr<ZQ_RMT_MODELS::BatteryData> BatteryData;
  std::unique_ptr<ZQ_RMT_MODELS::CameraData> CameraData;
  std::unique_ptr<ZQ_RMT_MODELS::CPUData> CPUData;
  std::unique_ptr<MassStorageData> StorageData;
  std::unique_ptr<ZQ_RMT_MODELS::KeyboardData> KeyboardData;
  std::unique_ptr<ZQ_RMT_MODELS::MotherboardData> MotherboardData;
  std::unique_ptr<ZQ_RMT_MODELS::MouseData> MouseData;
  std::unique_ptr<ZQ_RMT_MODELS::NICData> NICData;
  std::unique_ptr<ZQ_RMT_MODELS::RegistryAccessData> RegistryAccessData;
  std::unique_ptr<ZQ_RMT_MODELS::VideoData> VideoData;
  std::unique_ptr<ZQ_RMT_MODELS::DevList> DevList;
  std::unique_ptr<ZQ_RMT_MODELS::DevProperties> DevProperties;

  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
