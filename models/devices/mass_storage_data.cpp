#include "models/devices/mass_storage_data.h"

#include "json/member_kinds.h"
#include "logging/model_logger.h"

namespace ZQ_RMT_MODELS {
namespace {

json::ReadResult ReadDevice(const json::Reading& reading, void* target) {
  if (json::IsAbsentRecord(reading.member)) return json::ReadResult::kNothing;
  logging::GetModelLogger().LogDebug2(455, "Deserializing DI data.", 0.0);
  return json::KindOf<std::unique_ptr<STORAGE_DEVICE_INFO>>::Read(reading, target);
}

// Attributes that are read are added to those that the record has.
json::ReadResult ReadSmartAttributes(const json::Reading& reading, void* target) {
  if (reading.member == nullptr || !reading.member->IsArray()) return json::ReadResult::kNothing;
  auto& attributes = *static_cast<std::vector<SMART_ATTRIBUTE>*>(target);
  attributes.reserve(attributes.size() + reading.member->Size());
  for (const json::Value& element : reading.member->GetArray()) {
    SMART_ATTRIBUTE attribute;
    DeserializeSmartAttribute(element, attribute);
    attributes.push_back(attribute);
  }
  return json::ReadResult::kStored;
}

bool WriteSmartAttributes(const json::Field&, const void* source, json::Document& document, json::Value& out) {
  out.SetArray();
  for (const SMART_ATTRIBUTE& attribute : *static_cast<const std::vector<SMART_ATTRIBUTE>*>(source)) {
    json::Value element;
    SerializeSmartAttribute(attribute, element, document);
    out.PushBack(element, document.GetAllocator());
  }
  return true;
}

using Device = json::KindOf<std::unique_ptr<STORAGE_DEVICE_INFO>>;
constexpr json::Kind kDevice = {
    .read = ReadDevice, .write = Device::Write, .name = Device::kind.name, .record = STORAGE_DEVICE_INFO::Table};
constexpr json::Kind kSmartAttributes = {
    .read = ReadSmartAttributes, .write = WriteSmartAttributes, .name = "list of SMART attributes"};

constexpr const char* kSmartNote =
    "objects of attributeID, attributeFlags (an object of the flags warranty, off_line, performance, error_rate, "
    "event_count, self_preservation, RESERVED1, RESERVED2), attributeValue, worstNormalizedValue, rawAttributeValue "
    "(4 bytes), VendorSpecific (2 bytes) and threshold, each number a byte; a number or flag that is missing repeats "
    "the one before it in the object; RESERVED1 comes back as RESERVED2, and RESERVED2 is dropped";

constexpr json::Field kMassStorageDataFields[] = {
    json::row<&MassStorageData::di, kDevice>(u"di"),
    json::row<&MassStorageData::smartAttributes, kSmartAttributes>(u"smartAttributes", {.note = kSmartNote}),
    json::row<&MassStorageData::readCount>(u"readCount", {.id = 0}),
    json::row<&MassStorageData::pollingTimeoutPercentGracePeriod>(u"pollingTimeoutPercentGracePeriod", {.id = 0}),
    json::row<&MassStorageData::pollTime>(u"pollTime", {.id = 0}),
    json::row<&MassStorageData::testTime>(u"testTime", {.id = 0}),
    json::row<&MassStorageData::maxAllowedTime>(u"maxAllowedTime", {.id = 0}),
    json::row<&MassStorageData::execStatusNibble>(u"execStatusNibble", {.id = 0}),
    json::row<&MassStorageData::failingLba>(u"failingLba", {.id = 0}),
    json::row<&MassStorageData::lifeTimestamp>(u"lifeTimestamp", {.id = 0}),
    json::row<&MassStorageData::selfTestStatus>(u"selfTestStatus", {.id = 0}),
    json::row<&MassStorageData::lba>(u"lba", {.id = 0}),
    json::row<&MassStorageData::latestIndex>(u"latestIndex", {.id = 0}),
    json::row<&MassStorageData::readGetLastErrorNumber>(u"readGetLastErrorNumber", {.id = 0}),
    json::row<&MassStorageData::readGetLastErrorMessage>(u"readGetLastErrorMessage"),
    json::row<&MassStorageData::readFileExOverlappedErrorCode>(u"readFileExOverlappedErrorCode", {.id = 0}),
    json::row<&MassStorageData::numberOfBytesTransferred>(u"numberOfBytesTransferred", {.id = 0}),
    json::row<&MassStorageData::overlappedOffset>(u"overlappedOffset", {.id = 0}),
    json::row<&MassStorageData::overlappedOffsetHigh>(u"overlappedOffsetHigh", {.id = 0}),
    json::row<&MassStorageData::cylinderLowRegister>(u"cylinderLowRegister", {.id = 0}),
    json::row<&MassStorageData::cylinderHighRegister>(u"cylinderHighRegister", {.id = 0}),
    json::row<&MassStorageData::Type>(u"Type", {.id = 0}),
    json::row<&MassStorageData::PassThrough>(u"PassThrough", {.id = 0}),
    json::row<&MassStorageData::IsNVMeRST>(u"IsNVMeRST", {.id = 0}),
    json::row<&MassStorageData::IsNVMeDSTSupport>(u"IsNVMeDSTSupport", {.id = 0}),
};
constexpr json::RecordTable kMassStorageDataTable = json::Table(
    {.name = "MassStorageData", .fields = kMassStorageDataFields, .logsDeserializeEntry = false, .completeId = 776});

}  // namespace

void MassStorageData::Deserialize(const json::Value* value) {
  if (json::IsAbsentRecord(value)) return;
  // Other records log that they are entered. This one logs this line instead.
  logging::GetModelLogger().LogDebug2(456, "Starting MassStorageData::Deserialize", 0.0);
  json::ReadRecord(kMassStorageDataTable, this, value);
}

json::Serialized MassStorageData::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kMassStorageDataTable, this, inComingDoc);
}

const json::RecordTable& MassStorageData::Table() { return kMassStorageDataTable; }

}  // namespace ZQ_RMT_MODELS
