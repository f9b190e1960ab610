#include "models/core/software_info.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kFields[] = {
    json::row<&SoftwareInfo::ProductName>(u"ProductName", {.id = 8101}),
    json::row<&SoftwareInfo::LibraryList>(u"LibraryList", {.id = 8102}),
    json::row<&SoftwareInfo::VersionInfo>(u"VersionInfo", {.id = 8103}),
    json::row<&SoftwareInfo::SignatureInfo>(u"SignatureInfo", {.id = 8104}),
    json::row<&SoftwareInfo::BuildDate>(u"BuildDate", {.id = 8105}),
};
constexpr json::RecordTable kTable =
    json::Table({.name = "SoftwareInfo", .fields = kFields, .logsSerializeEntry = false});

}  // namespace

const json::RecordTable& SoftwareInfo::Table() { return kTable; }

}  // namespace ZQ_RMT_MODELS
