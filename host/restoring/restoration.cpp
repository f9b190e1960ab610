#include "host/restoring/restoration.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/endpoints/endpoint_volume.h"
#include "text/utf.h"

namespace host {
namespace {

using State = Restoration::State;

// Nothing when neither is known.
std::optional<std::string> SettingsText(const std::optional<std::vector<float>>& levels, std::optional<bool> muted) {
  std::vector<std::string> settings;
  if (levels.has_value()) settings.push_back("levels " + LevelsText(*levels));
  if (muted.value_or(false)) settings.emplace_back("muted");
  if (settings.empty()) return std::nullopt;
  return fmt::format("{}", fmt::join(settings, ", "));
}

EndpointRestoration Known(const Endpoint& saved) {
  EndpointRestoration known;
  known.id = saved.id;
  known.name = saved.name;
  known.before = SettingsText(saved.levels, saved.muted);
  if (!saved.levels.has_value()) known.unknown.emplace_back("levels");
  if (!saved.muted.has_value()) known.unknown.emplace_back("mute");
  return known;
}

// What the system makes of full level, which may have steps.
bool IsFull(float level) { return level > 0.995F; }

void PutLevelsBack(const EndpointVolume& volume, const std::vector<float>& saved,
                   const std::optional<std::vector<float>>& found, EndpointRestoration& done,
                   std::vector<std::string>& refused) {
  std::vector<float> wanted = saved;
  if (found.has_value() && found->size() == saved.size()) {
    for (std::size_t channel = 0; channel < saved.size(); ++channel) {
      if (!IsFull((*found)[channel])) wanted[channel] = (*found)[channel];
    }
  }
  if (wanted != saved) done.kept.emplace_back("levels");
  if (wanted == found) return;
  // To the last bit: a level that went through the module's floats comes back as it was.
  const bool isBack = volume.SetLevels(wanted) && volume.Levels() == wanted;
  (isBack ? done.putBack : refused).emplace_back("levels");
}

EndpointRestoration PutBack(const Endpoint& saved) {
  EndpointRestoration done = Known(saved);
  if (done.unknown.size() == 2) return done;

  const std::optional<EndpointVolume> volume = EndpointVolume::Of(saved.flow, saved.id);
  if (!volume.has_value()) {
    done.error = "the endpoint is not there any more, or the audio system doesn't answer";
    return done;
  }
  const std::optional<bool> muted = volume->Muted();
  const std::optional<std::vector<float>> levels = volume->Levels();
  done.found = SettingsText(levels, muted);
  std::vector<std::string> refused;
  if (saved.muted.has_value() && muted != saved.muted) {
    if (muted == true) {
      done.kept.emplace_back("mute");
    } else {
      const bool isBack = volume->SetMuted(*saved.muted) && volume->Muted() == saved.muted;
      (isBack ? done.putBack : refused).emplace_back("mute");
    }
  }
  if (saved.levels.has_value() && levels != saved.levels) PutLevelsBack(*volume, *saved.levels, levels, done, refused);
  if (!refused.empty()) done.error = fmt::format("the audio system doesn't take its {}", fmt::join(refused, " and "));
  done.after = SettingsText(volume->Levels(), volume->Muted());
  return done;
}

}  // namespace

const char* Word(State state) {
  static constexpr const char* kWords[] = {"yes", "no", "unknown", "not needed"};
  return kWords[static_cast<std::size_t>(state)];
}

State Restoration::Summary() const {
  if (notNeeded.has_value()) return State::kNotNeeded;
  const auto any = [this](auto predicate) { return std::any_of(endpoints.begin(), endpoints.end(), predicate); };
  if (any([](const EndpointRestoration& endpoint) { return endpoint.error.has_value(); })) return State::kNo;
  if (any([](const EndpointRestoration& endpoint) { return !endpoint.unknown.empty(); })) return State::kUnknown;
  return State::kYes;
}

bool Restoration::FoundAllAsBefore() const {
  return std::all_of(endpoints.begin(), endpoints.end(), [](const EndpointRestoration& endpoint) {
    return endpoint.putBack.empty() && endpoint.kept.empty() && endpoint.unknown.empty() && !endpoint.error.has_value();
  });
}

Restoration PutBack(const std::vector<Endpoint>& saved) {
  Restoration restoration;
  if (saved.empty()) restoration.notNeeded = "the contract names no active endpoint";
  for (const Endpoint& endpoint : saved) restoration.endpoints.push_back(PutBack(endpoint));
  return restoration;
}

Restoration FailedRestoration(const std::vector<Endpoint>& saved, const std::string& error) {
  Restoration restoration;
  for (const Endpoint& endpoint : saved) {
    EndpointRestoration& failed = restoration.endpoints.emplace_back(Known(endpoint));
    // Where nothing was known, nothing was to be put back.
    if (failed.unknown.size() < 2) failed.error = error;
  }
  return restoration;
}

std::string RestorationText(const Restoration& restoration) {
  const State state = restoration.Summary();
  std::string text = fmt::format("restored: {}", Word(state));
  if (state == State::kNotNeeded) text += ", " + *restoration.notNeeded;
  for (const EndpointRestoration& endpoint : restoration.endpoints) {
    const auto tell = [&](const std::string& what) { text += fmt::format("; '{}': {}", endpoint.name, what); };
    if (endpoint.error.has_value()) tell(*endpoint.error);
    if (endpoint.error.has_value() && endpoint.before.has_value()) text += ", and it had " + *endpoint.before;
    if (!endpoint.putBack.empty()) tell(fmt::format("{} put back", fmt::join(endpoint.putBack, " and ")));
    if (!endpoint.kept.empty()) {
      tell(fmt::format("{} changed by somebody meanwhile, and left so", fmt::join(endpoint.kept, " and ")));
    }
    if (!endpoint.unknown.empty()) tell(fmt::format("{} unknown", fmt::join(endpoint.unknown, " and ")));
  }
  return text::Printable(text);
}

Failure NotRestored(const Restoration& restoration) {
  return {ExitCode::kNotRestored, fmt::format("The settings could not be put back ({}).", RestorationText(restoration)),
          "Set them by hand in the system's sound settings; 'rmthost restore' tries again."};
}

}  // namespace host
