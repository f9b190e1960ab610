#include "logging/log_file.h"

#include "logging/log_directory.h"

namespace logging {

std::string NormalizeLogName(std::string name) {
  const std::string allowed =
      std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 -.:_") + GetLogDirectory().separator;
  if (name.find_first_not_of(allowed) != std::string::npos) return kDefaultLogName;
  if (name.size() >= 4 && name[name.size() - 4] == '.') name.resize(name.size() - 4);
  return name + kLogExtension;
}

}  // namespace logging
