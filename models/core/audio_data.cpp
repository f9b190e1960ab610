#include "models/core/audio_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// Log readers rely on the blank behind the colon. No other record's lines have one.
constexpr json::Field kFields[] = {
    json::row<&AudioData::maxAmplitude>(u"maxAmplitude", {.id = 0, .line = "Set maxAmplitude: "}),
    json::row<&AudioData::targetDevice>(u"targetDevice", {.id = 0, .line = "Set targetDevice: "}),
    json::row<&AudioData::CommandExecuted>(u"CommandExecuted", {.id = 0, .line = "Set CommandExecuted: "}),
};
constexpr auto kWriteOrder = json::WriteOrder<kFields>({u"CommandExecuted", u"maxAmplitude", u"targetDevice"});
constexpr json::RecordTable kTable = json::Table({.name = "AudioData",
                                                  .fields = kFields,
                                                  .writeOrder = kWriteOrder,
                                                  .logsDeserializeEntry = false,
                                                  .completeId = 785});

}  // namespace

const json::RecordTable& AudioData::Table() { return kTable; }

}  // namespace ZQ_RMT_MODELS
