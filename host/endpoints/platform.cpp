#include "host/endpoints/platform.h"

#include <fmt/format.h>

#include "host/base/failure.h"
#include "host/endpoints/endpoints.h"

namespace host {

bool EndsWithProcess(const std::string& description) { return description.starts_with("virtual"); }

PlatformChoice ChoosePlatform(const std::string& asked) {
  if (asked != "auto") return {.asked = asked, .used = asked, .note = {}};
  try {
    const Platform system(kSystemPlatform);
    ReadEndpoints();
    return {.asked = asked, .used = kSystemPlatform, .note = {}};
  } catch (const Failure& failure) {
    return {.asked = asked,
            .used = "virtual",
            .note = fmt::format("The virtual machine was used in place of this system's sound, so nothing was really "
                                "played or heard. {}",
                                failure.message)};
  }
}

}  // namespace host
