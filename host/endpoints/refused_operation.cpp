#include "host/endpoints/refused_operation.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>

#include "host/base/json.h"

namespace host {
namespace {

struct Explanation {
  std::uint32_t status;
  const char* advice;
};

// By the statuses' published meanings. The sound server's way to them stands in docs/sound-server.md.
constexpr Explanation kExplanations[] = {
    {0x88890010,  // AUDCLNT_E_SERVICE_NOT_RUNNING
     "The sound service has ended or stopped answering in the middle of the test. Start it again, and test again; its own "
     "log says why it ended."},
    {0x88890004,  // AUDCLNT_E_DEVICE_INVALIDATED
     "The endpoint went away in the middle of the test: check that its plug sits well and that nothing switched it off or "
     "took it over."},
    {0x88890026,  // AUDCLNT_E_RESOURCES_INVALIDATED
     "The endpoint took the sound and did not play it, as one that is suspended does: end the program that suspended it, "
     "or wake it (with a sound server: 'pactl suspend-sink NAME 0'), and test again."},
    {0x8889000A,  // AUDCLNT_E_DEVICE_IN_USE
     "Another program holds the endpoint for itself alone: end that program, or take its exclusive use away in the sound "
     "settings."},
    {0x80070490,  // E_NOTFOUND
     "There is no such endpoint. Every test needs a default render endpoint, and a record test a default capture endpoint "
     "too: 'rmthost list' marks them, and the system's sound settings name them."},
    {0x80070005,  // E_ACCESSDENIED
     "The system doesn't let this program use the endpoint: allow it in the privacy settings for microphones, or run it as "
     "a user who may use sound."},
};

}  // namespace

std::optional<RefusedOperation> RefusedOperationIn(const std::string& stateText) {
  try {
    return ParseJson(stateText).at("lastRefusal").get<RefusedOperation>();
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

std::string RefusalText(const RefusedOperation& refused) {
  const std::string place = refused.endpoint.has_value() ? fmt::format(" on '{}'", *refused.endpoint) : "";
  return fmt::format("{}{} gave 0x{:08X}", refused.operation, place, static_cast<std::uint32_t>(refused.status));
}

std::string AdviceFor(const RefusedOperation& refused) {
  const auto* const known =
      std::find_if(std::begin(kExplanations), std::end(kExplanations),
                   [&](const Explanation& one) { return one.status == static_cast<std::uint32_t>(refused.status); });
  return known == std::end(kExplanations) ? "" : known->advice;
}

}  // namespace host
