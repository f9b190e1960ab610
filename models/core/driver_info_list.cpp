#include "models/core/driver_info_list.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr json::Field kDriverInformationFields[] = {
    json::row<&DriverInformation::Title>(u"Title"),
    json::row<&DriverInformation::Description>(u"Description"),
    json::row<&DriverInformation::DriverModel>(u"DriverModel"),
    json::row<&DriverInformation::DriverClass>(u"DriverClass"),
    json::row<&DriverInformation::DriverManufacturer>(u"DriverManufacturer"),
    json::row<&DriverInformation::Type>(u"Type"),
    json::row<&DriverInformation::UninstallationNotes>(u"UninstallationNotes"),
    json::row<&DriverInformation::SupportUrl>(u"SupportUrl"),
    json::row<&DriverInformation::IsPresent>(u"IsPresent"),
    json::row<&DriverInformation::IsDownloaded>(u"IsDownloaded"),
    json::row<&DriverInformation::IsInstalled>(u"IsInstalled"),
    json::row<&DriverInformation::RebootRequired>(u"RebootRequired"),
    json::row<&DriverInformation::UpdateID>(u"UpdateID"),
    json::row<&DriverInformation::CurrentVersion>(u"CurrentVersion"),
};
constexpr json::RecordTable kDriverInformationTable =
    json::Table({.name = "DriverInformation", .fields = kDriverInformationFields, .logsSerializeEntry = false});

constexpr json::Field kDriverInfoListFields[] = {
    json::row<&DriverInfoList::TotalUpdatesCount>(u"TotalUpdatesCount"),
    json::row<&DriverInfoList::Title>(u"Title"),
    json::row<&DriverInfoList::DriverinformationList>(u"DriverinformationList"),
};
constexpr json::RecordTable kDriverInfoListTable =
    json::Table({.name = "DriverInfoList", .fields = kDriverInfoListFields, .logsSerializeEntry = false});

}  // namespace

void DriverInformation::Deserialize(const json::Value* value) {
  json::ReadRecord(kDriverInformationTable, this, value);
}

json::Serialized DriverInformation::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kDriverInformationTable, this, inComingDoc);
}

const json::RecordTable& DriverInformation::Table() { return kDriverInformationTable; }

const json::RecordTable& DriverInfoList::Table() { return kDriverInfoListTable; }

}  // namespace ZQ_RMT_MODELS
