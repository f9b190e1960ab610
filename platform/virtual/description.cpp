#include "platform/virtual/description.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>

#include "platform/front/operation.h"
#include "platform/virtual/description_json.h"
#include "platform/virtual/description_node.h"
#include "text/utf.h"

namespace virtual_audio {

namespace {

constexpr std::int64_t kHighestWord = 0xFFFFFFFF;

// The endpoints that were read so far, to be looked up by id.
struct EndpointTable {
  std::vector<EndpointDescription>& endpoints;
  std::unordered_map<std::string, std::size_t> places;
};

// A member of a path condition: a number within a range, and where it goes.
struct PathMember {
  std::string_view key;
  double lowest, highest;
  double PathCondition::*value;
};

constexpr PathMember kAt = {"atMs", 0.0, 3'600'000.0, &PathCondition::atMs};
constexpr PathMember kLength = {"lengthMs", 0.0, 10'000.0, &PathCondition::lengthMs};
constexpr PathMember kDelay = {"delayMs", 0.0, 10'000.0, &PathCondition::delayMs};
constexpr PathMember kHz = {"hz", 1.0, 200'000.0, &PathCondition::hz};
constexpr PathMember kLevel = {"level", 0.0, 1.0, &PathCondition::level};
constexpr PathMember kSignedLevel = {"level", -1.0, 1.0, &PathCondition::level};
constexpr PathMember kGain = {"gain", -16.0, 16.0, &PathCondition::gain};
constexpr PathMember kRatio = {"ratio", 0.5, 2.0, &PathCondition::ratio};
constexpr PathMember kRatioDb = {"ratioDb", -40.0, 140.0, &PathCondition::ratioDb};
// Its range depends on the endpoint.
constexpr PathMember kChannel = {"channel", 0.0, 0.0, &PathCondition::channel};

// What each kind has, in the order of PathCondition::Kind. Every member must be given.
constexpr std::string_view kPathKinds[] = {"speed",  "echo", "lowpass", "cut", "hum",  "tone",    "noise",
                                           "offset", "clip", "repeat",  "gap", "dead", "inverted"};
constexpr const PathMember* kPathMembers[][2] = {{&kRatio},       {&kDelay, &kGain}, {&kHz},           {&kAt},
                                                 {&kHz, &kLevel}, {&kHz, &kLevel},   {&kRatioDb},      {&kSignedLevel},
                                                 {&kLevel},       {&kAt, &kLength},  {&kAt, &kLength}, {&kChannel},
                                                 {&kChannel}};
static_assert(std::size(kPathKinds) == std::size(kPathMembers));

SampleFormat ReadFormat(const Node& node) {
  constexpr std::string_view kKeys[] = {"tag", "channels", "rate", "bits", "validBits", "channelMask"};
  constexpr std::string_view kTags[] = {"pcm", "float", "extensible"};
  constexpr WORD kTagValues[] = {WAVE_FORMAT_PCM, WAVE_FORMAT_IEEE_FLOAT, WAVE_FORMAT_EXTENSIBLE};
  node.AllowKeys(kKeys);
  SampleFormat format;
  format.tag = kTagValues[node["tag"].ChoiceOr(0, kTags)];
  format.isFloat = format.tag == WAVE_FORMAT_IEEE_FLOAT;
  format.channels = static_cast<WORD>(node["channels"].WholeNumberOr(format.channels, 1, SampleFormat::kMostChannels));
  format.rate = static_cast<DWORD>(
      node["rate"].WholeNumberOr(format.rate, SampleFormat::kLowestRate, SampleFormat::kHighestRate));
  format.bits = static_cast<WORD>(node["bits"].WholeNumberOr(format.isFloat ? 32 : 16, format.isFloat ? 32 : 8, 32));
  if (format.bits % 8 != 0) node["bits"].Refuse("must be 8, 16, 24 or 32");
  if (format.tag != WAVE_FORMAT_EXTENSIBLE) {
    for (const std::string_view key : {"validBits", "channelMask"}) {
      if (node[key].IsThere()) node[key].Refuse("only a format with the tag \"extensible\" has it");
    }
  }
  format.validBits = static_cast<WORD>(node["validBits"].WholeNumberOr(format.bits, 1, format.bits));
  // Front centre, or front left and right; with more channels the speakers stay unnamed.
  const DWORD usualMask = format.channels == 1 ? 4 : format.channels == 2 ? 3 : 0;
  format.channelMask = static_cast<DWORD>(node["channelMask"].WholeNumberOr(usualMask, 0, kHighestWord));
  return format;
}

void ReadClosest(const Node& node, EndpointDescription& endpoint) {
  if (!node.IsThere() || node.IsNull()) return;
  endpoint.takesEveryPcm = false;
  if (!node.IsText("none")) endpoint.closest = ReadFormat(node);
}

void ReadDefaultRoles(const Node& node, EndpointDescription& endpoint, const EndpointTable& table) {
  constexpr std::string_view kRoles[] = {"console", "multimedia", "communications"};
  for (const Node& element : node.Elements()) {
    const auto role = static_cast<ERole>(element.Choice(kRoles));
    if (endpoint.state != DEVICE_STATE_ACTIVE) element.Refuse("an endpoint that isn't active can't be a default");
    const auto holdsRole = [&](const EndpointDescription& other) {
      return other.key.flow == endpoint.key.flow &&
             std::find(other.defaultRoles.begin(), other.defaultRoles.end(), role) != other.defaultRoles.end();
    };
    if (holdsRole(endpoint) || std::any_of(table.endpoints.begin(), table.endpoints.end(), holdsRole)) {
      element.Refuse("this role's default is already given");
    }
    endpoint.defaultRoles.push_back(role);
  }
}

PathCondition ReadPathCondition(const Node& node, WORD channels) {
  const std::size_t kind = node["kind"].Choice(kPathKinds);
  PathCondition condition{.kind = static_cast<PathCondition::Kind>(kind)};
  std::vector<std::string_view> keys = {"kind"};
  for (const PathMember* member : kPathMembers[kind]) {
    if (member != nullptr) keys.push_back(member->key);
  }
  node.AllowKeys(keys);
  for (const PathMember* member : kPathMembers[kind]) {
    if (member == nullptr) continue;
    const Node value = node[member->key];
    value.MustBeThere();
    condition.*member->value = member == &kChannel ? static_cast<double>(value.WholeNumberOr(0, 0, channels - 1))
                                                   : value.NumberOr(0.0, member->lowest, member->highest);
  }
  return condition;
}

std::vector<PathCondition> ReadPath(const Node& list, WORD channels) {
  std::vector<PathCondition> path;
  bool hasSpeed = false;
  for (const Node& node : list.Elements()) {
    path.push_back(ReadPathCondition(node, channels));
    if (path.back().kind != PathCondition::Kind::kSpeed) continue;
    if (std::exchange(hasSpeed, true)) node["kind"].Refuse("a path has only one speed");
  }
  std::stable_sort(path.begin(), path.end(),
                   [](const PathCondition& one, const PathCondition& other) { return one.kind < other.kind; });
  return path;
}

EndpointDescription ReadEndpoint(const Node& node, EndpointTable& table) {
  constexpr std::string_view kKeys[] = {"id",    "name",   "flow",    "state", "default", "levels",      "muted",
                                        "noise", "format", "closest", "hears", "path",    "marksSilence"};
  constexpr std::string_view kFlows[] = {"render", "capture"};
  constexpr std::string_view kStates[] = {"active", "disabled", "notpresent", "unplugged"};
  constexpr DWORD kStateValues[] = {DEVICE_STATE_ACTIVE, DEVICE_STATE_DISABLED, DEVICE_STATE_NOTPRESENT,
                                    DEVICE_STATE_UNPLUGGED};
  node.AllowKeys(kKeys);
  EndpointDescription endpoint;
  const std::string id = node["id"].Text();
  if (!table.places.emplace(id, table.endpoints.size()).second) node["id"].Refuse("another endpoint has this id");
  endpoint.key.name = id;
  endpoint.id = text::ToUtf16(id);
  endpoint.name = node["name"].IsThere() ? text::ToUtf16(node["name"].Text()) : endpoint.id;
  endpoint.key.flow = static_cast<EDataFlow>(node["flow"].Choice(kFlows));
  endpoint.state = kStateValues[node["state"].ChoiceOr(0, kStates)];
  ReadDefaultRoles(node["default"], endpoint, table);
  if (node["format"].IsThere()) endpoint.format = ReadFormat(node["format"]);
  if (!node["levels"].IsThere()) endpoint.levels.assign(endpoint.format.channels, 1.0F);
  for (const Node& level : node["levels"].Elements()) {
    endpoint.levels.push_back(static_cast<float>(level.NumberOr(0.0, 0.0, 1.0)));
  }
  endpoint.muted = node["muted"].BooleanOr(false);
  ReadClosest(node["closest"], endpoint);
  for (const std::string_view key : {"noise", "hears", "path", "marksSilence"}) {
    if (node[key].IsThere() && endpoint.key.flow != eCapture) node[key].Refuse("only a capture endpoint has it");
  }
  endpoint.noise = node["noise"].NumberOr(0.0, 0.0, 1.0);
  endpoint.marksSilence = node["marksSilence"].BooleanOr(false);
  endpoint.path = ReadPath(node["path"], endpoint.format.channels);
  return endpoint;
}

Hearing ReadHearing(const Node& node, const EndpointTable& table) {
  constexpr std::string_view kKeys[] = {"endpoint", "gain", "delayMs"};
  node.AllowKeys(kKeys);
  const Node target = node["endpoint"];
  const auto place = table.places.find(target.Text());
  if (place == table.places.end()) target.Refuse("no endpoint has this id");
  if (table.endpoints[place->second].key.flow != eRender) target.Refuse("is not a render endpoint");
  return {.endpoint = place->second,
          .gain = node["gain"].NumberOr(1.0, -16.0, 16.0),
          .delay = node["delayMs"].WholeNumberOr(0, 0, 10000) * kMillisecond};
}

platform::Fault ReadFault(const Node& node) {
  constexpr std::string_view kKeys[] = {"operation", "call", "status", "sticky", "observer"};
  node.AllowKeys(kKeys);
  const Node operation = node["operation"];
  const Node status = node["status"];
  status.MustBeThere();
  const auto given = static_cast<HRESULT>(status.WholeNumberOr(0, INT32_MIN, INT32_MAX));
  // A caller would wait without end for a stream that has started and doesn't run.
  if (given == S_OK && operation.IsText("IAudioClient::Start")) {
    status.Refuse("must not be 0, which is success: the stream doesn't start");
  }
  if (operation.IsText("Sleep")) operation.Refuse("Sleep has no status, so it can't fail");
  return {.operation = operation.Choice(platform::kOperations),
          .call = node["call"].WholeNumberOr(1, 1, kHighestWord),
          .status = given,
          .sticky = node["sticky"].BooleanOr(false),
          .observer = node["observer"].BooleanOr(false)};
}

}  // namespace

MachineDescription ParseDescription(std::string_view json) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  constexpr std::string_view kKeys[] = {"clock", "seed", "endpoints", "faults"};
  constexpr std::string_view kClocks[] = {"real", "virtual"};
  if (json.starts_with(kByteOrderMark)) json.remove_prefix(kByteOrderMark.size());
  const JsonTree document = ReadJson(json);
  const Node root(&document.front(), "");
  root.AllowKeys(kKeys);
  MachineDescription machine;
  machine.hasVirtualClock = root["clock"].ChoiceOr(0, kClocks) == 1;
  machine.seed = static_cast<std::uint64_t>(root["seed"].WholeNumberOr(1, 0, kHighestWord));
  const std::vector<Node> endpoints = root["endpoints"].Elements();
  EndpointTable table{.endpoints = machine.endpoints, .places = {}};
  for (const Node& node : endpoints) machine.endpoints.push_back(ReadEndpoint(node, table));
  // An endpoint may hear one that is described after it.
  for (std::size_t i = 0; i < endpoints.size(); ++i) {
    for (const Node& node : endpoints[i]["hears"].Elements()) {
      machine.endpoints[i].hears.push_back(ReadHearing(node, table));
    }
  }
  for (const Node& node : root["faults"].Elements()) machine.faults.push_back(ReadFault(node));
  return machine;
}

}  // namespace virtual_audio
