#include "models/core/state_info.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kStateInfoFields[] = {
    json::row<&StateInfo::Progress>(u"Progress", {.id = 8201}),
    json::row<&StateInfo::State>(u"State", {.id = 1}),
    json::row<&StateInfo::StartTime>(u"StartTime", {.id = 1}),
    json::row<&StateInfo::PollingTime>(u"PollingTime", {.id = 1}),
};
constexpr json::RecordTable kStateInfoTable =
    json::Table({.name = "StateInfo", .fields = kStateInfoFields, .logsSerializeEntry = false, .completeId = 773});

}  // namespace

const json::RecordTable& StateInfo::Table() { return kStateInfoTable; }

}  // namespace ZQ_RMT_MODELS
