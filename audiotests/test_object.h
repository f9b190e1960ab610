// What the two test objects share.
#pragma once

#include <memory>
#include <string>

#include "logging/logger.h"
#include "models/core/rmt_data_contract.h"

namespace ZQ_RMT_TESTS_AUDIO {

// A test object's logger, writing to the framework's log, with the module's version logged. It is never destroyed:
// messages can come until the process ends. Raises nothing, whatever state the log directory is in: a host must be able
// to load the module.
logging::Logger* CreateTestLogger();

// A contract with a fresh core record.
std::unique_ptr<ZQ_RMT_MODELS::RMTDataContract> CreateContract();

// A copy of `text` that the host releases with free; null when there is no memory.
char16_t* DuplicateText(const std::u16string& text);

}  // namespace ZQ_RMT_TESTS_AUDIO
