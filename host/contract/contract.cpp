#include "host/contract/contract.h"

#include <fmt/format.h>
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/contract/parsed_contract.h"
#include "host/report/json_output.h"

namespace host {
namespace {

constexpr int kRecordPassed = 244995728;
constexpr int kPlaybackPassed = 244995729;

// Takes any value that the module is sure to take, and ends the parsing at any other.
struct UsableValues : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, UsableValues> {
  const char* reason = "";

  bool RawNumber(const char* number, rapidjson::SizeType, bool) {
    reason = "Number too big to be stored in double.";
    return std::isfinite(std::strtod(number, nullptr));
  }
  // Keys come here too. Half a character can only be an escape's: as bytes the text is valid.
  bool String(const char* bytes, rapidjson::SizeType length, bool) {
    reason = "The surrogate pair in string is invalid.";
    const std::string_view text(bytes, length);
    for (std::size_t at = text.find('\xED'); at != text.npos; at = text.find('\xED', at + 1)) {
      if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) return false;
    }
    return true;
  }
};

}  // namespace

const char* TestWord(Test test) {
  return test == Test::kPlay ? "play" : "record";
}

std::string BuildContract(Test test, const std::string& deviceId, const std::string& renderId) {
  JsonMembers device = {{"DeviceInstanceID", JsonString(deviceId)}};
  if (test == Test::kRecord) device.emplace_back("AudioData", JsonObject({{"targetDevice", JsonString(renderId)}}));
  return JsonObject({{"CoreData", JsonObject({{"DeviceInfo", JsonObject(device)}})}});
}

std::optional<Outcome> ReadReply(std::string_view reply) {
  const ParsedContract parsed{std::string(reply)};
  const rapidjson::Value* core = parsed.CoreData();
  const rapidjson::Value* code = FindMember(core, "ReturnCode");
  const rapidjson::Value* message = FindMember(core, "ReturnMessage");
  if (code == nullptr || !code->IsInt() || message == nullptr || !message->IsString()) return std::nullopt;
  const rapidjson::Value* amplitude =
      FindMember(FindMember(FindMember(core, "DeviceInfo"), "AudioData"), "maxAmplitude");
  return Outcome{.returnCode = code->GetInt(),
                 .returnMessage = std::string(message->GetString(), message->GetStringLength()),
                 .maxAmplitude = amplitude != nullptr && amplitude->IsNumber() ? amplitude->GetDouble() : 0.0};
}

bool Passed(Test test, const Outcome& outcome) {
  return outcome.returnCode == (test == Test::kRecord ? kRecordPassed : kPlaybackPassed);
}

std::string AdviceFor(const Outcome& outcome) {
  switch (outcome.returnCode) {
    case 744770117:
      return "No active endpoint has that id: check that it is plugged in and enabled; 'rmthost list' shows the "
             "endpoints.";
    case 744995582:
      return "The audio system refused an operation: check that no program holds an endpoint exclusively, and that the "
             "system has a default render endpoint, which every test needs, and a default capture endpoint, which a "
             "record test needs.";
    case 744995686:
      return "The contract isn't JSON, or names no endpoint: DeviceInstanceID of DeviceInfo takes the endpoint's id.";
    case 744990414:
      return "The module found no memory for the capture: close other programs and try again.";
    case 744995727:
      return "The capture is larger than the module's store: set the capture endpoint to fewer channels or a lower "
             "rate.";
    case 0:
      return "No outcome was reported: either the contract names no endpoint (DeviceInstanceID of DeviceInfo and, for "
             "a "
             "record test, AudioData in it), or a level flag file (*.flg) in the log directory hides it.";
    default:
      return fmt::format(
          "The code {} is no outcome of this test: one in the contract given, or a level flag file (*.flg) "
          "in the log directory, can hide the outcome.",
          outcome.returnCode);
  }
}

std::optional<JsonFault> FindJsonFault(std::string_view text) {
  rapidjson::MemoryStream stream(text.data(), text.size());
  UsableValues values;
  rapidjson::Reader reader;
  const rapidjson::ParseResult result = reader.Parse<kParseFlags>(stream, values);
  if (!result.IsError()) return std::nullopt;

  const std::string_view good = text.substr(0, result.Offset());
  const std::size_t lineStart = good.rfind('\n') + 1;  // npos + 1 is 0
  const auto isCharacterStart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return JsonFault{
      .line = 1 + static_cast<std::size_t>(std::count(good.begin(), good.end(), '\n')),
      .column = 1 + static_cast<std::size_t>(std::count_if(good.begin() + static_cast<std::ptrdiff_t>(lineStart),
                                                           good.end(), isCharacterStart)),
      .reason = result.Code() == rapidjson::kParseErrorTermination ? values.reason
                                                                   : rapidjson::GetParseError_En(result.Code())};
}

}  // namespace host
