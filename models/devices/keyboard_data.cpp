#include "models/devices/keyboard_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kKeyboardDataFields[] = {
    json::row<&KeyboardData::CommandExecuted>(u"CommandExecuted", {.id = 7901, .line = "Set m_commandExecuted:"}),
    json::row<&KeyboardData::KybdConfiguration>(u"KybdConfiguration", {.id = 7901, .line = "Set m_kybdConfiguration:"}),
    json::row<&KeyboardData::KybdLayout>(u"KybdLayout", {.id = 7901, .line = "Set m_kybdLayout:"}),
    json::row<&KeyboardData::TotalNumberOfKeys>(u"TotalNumberOfKeys", {.id = 7901}),
    json::row<&KeyboardData::hexValuesPressed>(u"hexValuesPressed", {.id = 7901, .line = "hexValuesPressed Count:"}),
    json::row<&KeyboardData::hexValuesReleased>(u"hexValuesReleased", {.id = 7901, .line = "hexValuesReleased Count:"}),
};
constexpr json::RecordTable kKeyboardDataTable =
    json::Table({.name = "KeyboardData", .fields = kKeyboardDataFields, .completeId = 7919});

}  // namespace

const json::RecordTable& KeyboardData::Table() { return kKeyboardDataTable; }

}  // namespace ZQ_RMT_MODELS
