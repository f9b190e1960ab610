#include "logging/log_file.h"

#include <exception>
#include <fstream>
#include <sstream>
#include <utility>

#include "logging/log_directory.h"

namespace logging {

std::string NormalizeLogName(std::string name) {
  const std::string allowed =
      std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 -.:_") + GetLogDirectory().separator;
  if (name.find_first_not_of(allowed) != std::string::npos) return kDefaultLogName;
  if (name.size() >= 4 && name[name.size() - 4] == '.') name.resize(name.size() - 4);
  return name + kLogExtension;
}

std::string ReadWholeFile(const std::string& path) {
  const std::ifstream file(path);
  std::ostringstream contents;
  contents << file.rdbuf();
  return std::move(contents).str();
}

void AppendLine(const std::string& path, const std::string& line) {
  try {
    std::ofstream file(path, std::ios::app);
    file.write(line.data(), static_cast<std::streamsize>(line.size()));
    file.close();
  } catch (const std::exception&) {
    return;
  }
}

}  // namespace logging
