#include "models/core/ui_rendering.h"

#include "json/access.h"
#include "json/member_kinds.h"

namespace ZQ_RMT_MODELS {
namespace {

// Without the key Direction, of whatever kind, nothing of this record is read.
json::ReadResult ReadCultureInfo(const json::Reading& reading, void* target) {
  if (json::FindMember(reading.object, u"Direction") == nullptr) return json::ReadResult::kNothing;
  return json::KindOf<std::u16string>::Read(reading, target);
}
constexpr json::Kind kCultureInfo = {
    .read = ReadCultureInfo, .write = json::KindOf<std::u16string>::Write, .name = "text"};

constexpr json::ListLines kParameterLines = {"Serialize Parameters Array",
                                             "Parameters.size():", "Serialized Parameters Array"};

constexpr json::Field kLanguageInfoFields[] = {
    json::row<&LanguageInfo::Direction>(u"Direction", {.id = 7901}),
    json::row<&LanguageInfo::CultureInfo, kCultureInfo>(
        u"CultureInfo", {.note = "read only when Direction is there, of whatever kind"}),
};
constexpr json::RecordTable kLanguageInfoTable =
    json::Table({.name = "LanguageInfo", .fields = kLanguageInfoFields, .completeId = 7919});

constexpr json::Field kUIParametersFields[] = {
    json::row<&UIParameters::Label>(u"Label", {.id = 1}),
    json::row<&UIParameters::Type>(u"Type", {.id = 1}),
    json::row<&UIParameters::ActionName>(u"ActionName", {.id = 1}),
    json::row<&UIParameters::DataValues>(u"DataValues", {.id = 1}),
};
constexpr json::RecordTable kUIParametersTable =
    json::Table({.name = "UIParameters", .fields = kUIParametersFields, .serializeEntryId = 1});

constexpr json::Field kUIRenderingFields[] = {
    json::row<&UIRendering::CategoryType>(u"CategoryType", {.id = 8401}),
    json::row<&UIRendering::CategoryOrder>(u"CategoryOrder", {.id = 1}),
    json::row<&UIRendering::Request>(u"Request", {.id = 1}),
    json::row<&UIRendering::Requestor>(u"Requestor", {.id = 1}),
    json::row<&UIRendering::Recipient>(u"Recipient", {.id = 1}),
    json::row<&UIRendering::Message>(u"Message", {.id = 1}),
    json::row<&UIRendering::MessageID>(u"MessageID", {.id = 1}),
    json::row<&UIRendering::MessageLabel>(u"MessageLabel", {.id = 1}),
    json::row<&UIRendering::Parameters>(u"Parameters", {.list = &kParameterLines}),
    json::row<&UIRendering::LanguageInfo>(u"LanguageInfo",
                                          {.id = 7608, .beforeWrite = {7622, "Serialize Nested Objects."}}),
};
constexpr json::RecordTable kUIRenderingTable =
    json::Table({.name = "UIRendering", .fields = kUIRenderingFields, .completeId = 772});

}  // namespace

const json::RecordTable& LanguageInfo::Table() { return kLanguageInfoTable; }

const json::RecordTable& UIParameters::Table() { return kUIParametersTable; }

const json::RecordTable& UIRendering::Table() { return kUIRenderingTable; }

}  // namespace ZQ_RMT_MODELS
