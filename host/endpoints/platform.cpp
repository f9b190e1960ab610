#include "host/endpoints/platform.h"

namespace host {

bool EndsWithProcess(const std::string& description) { return description.starts_with("virtual"); }

std::string ChoosePlatform(const std::string& asked) { return asked == "auto" ? kSystemPlatform : asked; }

}  // namespace host
