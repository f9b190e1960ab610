#include "models/core/core_data.h"

#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

using enum json::WriteLine::Shows;

constexpr const char* kAdding = "adding member to coreData:";

constexpr json::Field kCoreDataFields[] = {
    json::row<&CoreData::TimeStamp>(
        u"TimeStamp",
        {.id = 7600, .beforeWrite = {7617, kAdding, kKey}, .afterWrite = {7618, "Serialize TimeStamp:", kValue}}),
    json::row<&CoreData::TaskName>(u"TaskName", {.id = 7601, .beforeWrite = {7619, kAdding, kKey}}),
    json::row<&CoreData::TaskID>(u"TaskID", {.id = 7602}),
    json::row<&CoreData::TaskVersion>(u"TaskVersion", {.id = 7603}),
    json::row<&CoreData::ReturnCode>(u"ReturnCode", {.id = 7604}),
    json::row<&CoreData::ReturnMessage>(u"ReturnMessage", {.id = 7605}),
    json::row<&CoreData::Result>(u"Result", {.id = 7606, .afterWrite = {7620, "Serialize Result:", kValue}}),
    json::row<&CoreData::Status>(u"Status", {.id = 7607, .afterWrite = {7621, "Serialize Status:", kValue}}),
    json::row<&CoreData::DeviceInfo>(u"DeviceInfo", {.id = 7608, .beforeWrite = {7622, "Serialize Nested Objects."}}),
    json::row<&CoreData::SoftwareInfo>(u"SoftwareInfo", {.id = 7609}),
    json::row<&CoreData::DiagnosticInfo>(u"DiagnosticInfo", {.id = 7610}),
    json::row<&CoreData::UIRendering>(u"UIRendering", {.id = 7611}),
    json::row<&CoreData::EventLoggerData>(u"EventLoggerData", {.id = 7612}),
    json::row<&CoreData::StateInfo>(u"StateInfo", {.id = 7613}),
    json::row<&CoreData::TaskArguments>(u"TaskArguments", {.id = 7614, .line = "No Task Arguments set."}),
    json::row<&CoreData::DriverInfoList>(u"DriverInfoList", {.id = 7609, .line = "No DriverInfo to set."}),
};
constexpr json::RecordTable kCoreDataTable = json::Table({.name = "CoreData",
                                                          .fields = kCoreDataFields,
                                                          .newDocumentId = 7615,
                                                          .startLine = {7616, "Starting serialization in CoreData"},
                                                          .completeId = 7623});

}  // namespace

const json::RecordTable& CoreData::Table() { return kCoreDataTable; }

}  // namespace ZQ_RMT_MODELS
