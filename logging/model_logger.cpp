#include "logging/model_logger.h"

#include "logging/file_probe.h"
#include "logging/log_directory.h"
#include "logging/log_file.h"

namespace logging {

Logger& GetModelLogger() {
  static Logger* logger = nullptr;
  if (logger == nullptr) {
    const LogDirectory& directory = GetLogDirectory();
    EnsureDirectory(directory.path);
    logger = new Logger("ZQ_RMT_MODELS", directory.File(kDefaultLogName), 27000000);
  }
  return *logger;
}

}  // namespace logging
