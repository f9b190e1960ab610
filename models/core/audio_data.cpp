#include "models/core/audio_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// Log readers rely on the blank behind the colon. No other record's lines have one.
constexpr json::Field kAudioDataFields[] = {
    json::row<&AudioData::maxAmplitude>(u"maxAmplitude", {.id = 0, .line = "Set maxAmplitude: "}),
    json::row<&AudioData::targetDevice>(u"targetDevice", {.id = 0, .line = "Set targetDevice: "}),
    json::row<&AudioData::CommandExecuted>(u"CommandExecuted", {.id = 0, .line = "Set CommandExecuted: "}),
};
constexpr auto kAudioDataWriteOrder =
    json::WriteOrder<kAudioDataFields>({u"CommandExecuted", u"maxAmplitude", u"targetDevice"});
constexpr json::RecordTable kAudioDataTable = json::Table({.name = "AudioData",
                                                           .fields = kAudioDataFields,
                                                           .writeOrder = kAudioDataWriteOrder,
                                                           .logsDeserializeEntry = false,
                                                           .completeId = 785});

}  // namespace

const json::RecordTable& AudioData::Table() { return kAudioDataTable; }

}  // namespace ZQ_RMT_MODELS
