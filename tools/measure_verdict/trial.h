#pragma once

#include <filesystem>
#include <string>

#include "host/judging/verdict.h"

namespace measure_verdict {

// Runs the record test on a machine with kSpeakerId and kMicrophoneId, as rmthost would but in this process, and judges
// it by the default limits. `directory` is for the machine's file. Throws std::runtime_error when the module or the host
// couldn't do its part: then nothing was measured.
host::Verdict RunTrial(const std::string& description, const std::filesystem::path& directory);

}  // namespace measure_verdict
