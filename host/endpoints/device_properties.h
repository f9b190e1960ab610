#pragma once

#include <optional>
#include <string>

#include "platform/com_ptr.h"
#include "platform/core_audio.h"
#include "platform/sample_format.h"

namespace host {

// Reads the id of a device, as UTF-8. Gives the status of the operation; on failure `id` stays as it is.
HRESULT ReadDeviceId(IMMDevice& device, std::string& id);

// What a device tells of itself. The thread must stay on the platform.
class DeviceProperties {
 public:
  explicit DeviceProperties(IMMDevice& device);

  // Empty when the system doesn't tell.
  std::string Name() const;
  // Nothing when the system doesn't tell, or tells one that platform::SampleFormat can't describe.
  std::optional<platform::SampleFormat> Format() const;

 private:
  ComPtr<IPropertyStore> store_;  // null when the device gives none
};

}  // namespace host
