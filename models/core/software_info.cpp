#include "models/core/software_info.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kSoftwareInfoFields[] = {
    json::row<&SoftwareInfo::ProductName>(u"ProductName", {.id = 8101}),
    json::row<&SoftwareInfo::LibraryList>(u"LibraryList", {.id = 8102}),
    json::row<&SoftwareInfo::VersionInfo>(u"VersionInfo", {.id = 8103}),
    json::row<&SoftwareInfo::SignatureInfo>(u"SignatureInfo", {.id = 8104}),
    json::row<&SoftwareInfo::BuildDate>(u"BuildDate", {.id = 8105}),
};
constexpr json::RecordTable kSoftwareInfoTable =
    json::Table({.name = "SoftwareInfo", .fields = kSoftwareInfoFields, .logsSerializeEntry = false});

}  // namespace

const json::RecordTable& SoftwareInfo::Table() { return kSoftwareInfoTable; }

}  // namespace ZQ_RMT_MODELS
