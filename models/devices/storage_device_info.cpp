#include "models/devices/storage_device_info.h"

#include "json/access.h"
#include "json/member_kinds.h"
#include "models/devices/byte_array.h"

namespace ZQ_RMT_MODELS {
namespace {

using json::Field;
using json::Kind;
using json::Reading;
using json::ReadResult;

constexpr Field kAddressFields[] = {
    json::row<&SCSIAddress::Adapter>(u"Adapter", {.id = 7201}),
    json::row<&SCSIAddress::Bus>(u"Bus", {.id = 7202}),
    json::row<&SCSIAddress::Target>(u"Target", {.id = 7203}),
    json::row<&SCSIAddress::Lun>(u"Lun", {.id = 7204}),
};
constexpr json::RecordTable kAddressTable = json::Table({.name = "SCSIAddress", .fields = kAddressFields});

// No member of this record is logged when it is read. Some fail in a way of their own: a missing key, or one of another
// kind, sets narrow numbers to 0 and flags to false.
template <class Member, bool (*read)(const json::Value*, Member&)>
ReadResult ReadWith(const Reading& reading, void* target) {
  return read(reading.member, *static_cast<Member*>(target)) ? ReadResult::kStored : ReadResult::kNothing;
}

template <class Member, bool (*read)(const json::Value*, Member&)>
constexpr Kind kGetter = {
    .read = ReadWith<Member, read>, .write = json::KindOf<Member>::Write, .name = json::KindOf<Member>::kind.name};

bool ReadLowInt64(const json::Value* member, std::int32_t& target) {
  std::int64_t number = target;
  const bool stored = json::ReadScalar(member, number);
  target = static_cast<std::int32_t>(number);
  return stored;
}

// Hosts depend on the sign: 4294967295 comes back as -1.
bool WriteSigned(const Field&, const void* source, json::Document&, json::Value& out) {
  out.SetInt(static_cast<std::int32_t>(*static_cast<const std::uint32_t*>(source)));
  return true;
}

using Bytes = std::array<std::uint8_t, 8>;

bool ReadByteArray(const json::Value* member, Bytes& target) { return ReadBytes(member, target); }

bool WriteByteArray(const Field&, const void* source, json::Document& document, json::Value& out) {
  out = BytesValue(*static_cast<const Bytes*>(source), document);
  return true;
}

// A record that is a part of this one. It is always written, and reading changes only what is there.
template <class Record>
ReadResult ReadEmbedded(const Reading& reading, void* target) {
  if (reading.member != nullptr && reading.member->IsNull()) json::LogNullRecord(reading.field);
  if (json::IsAbsentRecord(reading.member)) return ReadResult::kNothing;
  static_cast<Record*>(target)->Deserialize(reading.member);
  return ReadResult::kStored;
}

template <class Record>
bool WriteEmbedded(const Field&, const void* source, json::Document& document, json::Value& out) {
  out = static_cast<const Record*>(source)->Serialize(&document).value;
  return true;
}

template <class Record>
constexpr Kind EmbeddedKind(const char* name, const json::RecordTable& (*record)()) {
  return {.read = ReadEmbedded<Record>,
          .write = WriteEmbedded<Record>,
          .name = name,
          .record = record,
          .linePrefix = "No ",
          .lineSuffix = " to set."};
}

constexpr const char* kZeroNote = "0 when missing or of another kind";
constexpr const char* kFalseNote = "false when missing or of another kind";
constexpr const char* kBytesNote = "read only when it has exactly 8 elements";
constexpr Kind kInt16 = kGetter<std::int16_t, json::ReadScalarOrZero>;
constexpr Kind kUint16 = kGetter<std::uint16_t, json::ReadScalarOrZero>;
constexpr Kind kInt64 = kGetter<std::int64_t, json::ReadScalar>;
constexpr Kind kLowInt64 = kGetter<std::int32_t, ReadLowInt64>;
constexpr Kind kHandle = {
    .read = ReadWith<std::uint64_t, json::ReadHandle>, .write = nullptr, .name = "a value that nothing reads"};
constexpr Kind kFlag = kGetter<bool, json::ReadScalarOrZero>;
constexpr Kind kUint64AsUint32 = {
    .read = ReadWith<std::uint32_t, json::ReadUint64AsUint32>, .write = WriteSigned, .name = "uint32 of a uint64"};
constexpr Kind kBytes = {.read = ReadWith<Bytes, ReadByteArray>, .write = WriteByteArray, .name = "8 bytes"};
constexpr Kind kAddress = EmbeddedKind<SCSIAddress>("record", SCSIAddress::Table);
constexpr Kind kHealthLog = EmbeddedKind<NVME_HEALTH_INFO_LOG_STRUCT>("image", nullptr);
constexpr Kind kIdentify = EmbeddedKind<NVME_IDENTIFY_CONTROLLER_DATA_STRUCT>("image", nullptr);

// In the order of reading. kStorageDeviceInfoWriteOrder below has the order on the wire, which is another.
constexpr Field kStorageDeviceInfoFields[] = {
    json::row<&STORAGE_DEVICE_INFO::DriveType>(u"DriveType"),
    json::row<&STORAGE_DEVICE_INFO::interfaceType>(u"interfaceType"),
    json::row<&STORAGE_DEVICE_INFO::DriveNumOnCtlr>(u"DriveNumOnCtlr"),
    json::row<&STORAGE_DEVICE_INFO::DriveNumInBox>(u"DriveNumInBox"),
    json::row<&STORAGE_DEVICE_INFO::CntlrNumInBox>(u"CntlrNumInBox"),
    json::row<&STORAGE_DEVICE_INFO::ConcNum>(u"ConcNum"),
    json::row<&STORAGE_DEVICE_INFO::scsi_X>(u"scsi_X"),
    json::row<&STORAGE_DEVICE_INFO::LinkRate>(u"LinkRate"),
    json::row<&STORAGE_DEVICE_INFO::Capacity>(u"Capacity"),
    json::row<&STORAGE_DEVICE_INFO::SATASpeed>(u"SATASpeed"),
    json::row<&STORAGE_DEVICE_INFO::hddNumInRaidVol>(u"hddNumInRaidVol"),
    json::row<&STORAGE_DEVICE_INFO::maxDrivesPerSet>(u"maxDrivesPerSet"),
    json::row<&STORAGE_DEVICE_INFO::raidSetNumber>(u"raidSetNumber"),
    json::row<&STORAGE_DEVICE_INFO::busType>(u"busType"),
    json::row<&STORAGE_DEVICE_INFO::TotalLBAs, kInt64>(u"TotalLBAs"),
    json::row<&STORAGE_DEVICE_INFO::BlockSize, kUint64AsUint32>(
        u"BlockSize", {.note = "0 when missing or of another kind; comes back as a signed number of 32 bits"}),
    json::row<&STORAGE_DEVICE_INFO::DiskRPM, kUint16>(u"DiskRPM", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::UDMASpeed, kUint16>(u"UDMASpeed", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::ModelFirmware>(u"ModelFirmware"),
    json::row<&STORAGE_DEVICE_INFO::Modelfirmware1>(u"Modelfirmware1", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::isWriteSupported>(u"isWriteSupported", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::DevInst>(u"DevInst", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::ControllerName>(u"ControllerName"),
    json::row<&STORAGE_DEVICE_INFO::VolumeName>(u"VolumeName", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::DriveTypeStr>(u"DriveTypeStr", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::NameAndNumber>(u"NameAndNumber", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::DriveHandleStr>(u"DriveHandleStr"),
    json::row<&STORAGE_DEVICE_INFO::ModelString>(u"ModelString"),
    json::row<&STORAGE_DEVICE_INFO::FirmwareVersion>(u"FirmwareVersion"),
    json::row<&STORAGE_DEVICE_INFO::SerialNumber>(u"SerialNumber"),
    json::row<&STORAGE_DEVICE_INFO::raidTypeStr>(u"raidTypeStr", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::raidNumber>(u"raidNumber", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::DCOID>(u"DCOID"),
    json::row<&STORAGE_DEVICE_INFO::ControllerPosition>(u"ControllerPosition", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::DeviceID>(u"DeviceID", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::SATAMajorVersion>(u"SATAMajorVersion"),
    json::row<&STORAGE_DEVICE_INFO::SATAMinorVersion>(u"SATAMinorVersion"),
    json::row<&STORAGE_DEVICE_INFO::NCQSupportFlg, kFlag>(u"NCQSupportFlg", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::TCGSupportFlg, kFlag>(u"TCGSupportFlg", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::SEDSupportFlg, kFlag>(u"SEDSupportFlg", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::AESSupportFlg, kFlag>(u"AESSupportFlg", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::isRemovableDevice, kFlag>(u"isRemovableDevice", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::isRaidVolume, kFlag>(u"isRaidVolume", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::isOkUseCDB16, kFlag>(u"isOkUseCDB16", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::bReserved2, kFlag>(u"bReserved2", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::bReserved3, kFlag>(u"bReserved3", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::sasAddr, kBytes>(u"sasAddr", {.note = kBytesNote}),
    json::row<&STORAGE_DEVICE_INFO::bSASLun, kBytes>(u"bSASLun", {.note = kBytesNote}),
    json::row<&STORAGE_DEVICE_INFO::SCSIadr, kAddress>(u"SCSIadr", {.id = 7301}),
    json::row<&STORAGE_DEVICE_INFO::hSCSIhandle, kHandle>(u"hSCSIhandle", {.written = false}),
    json::row<&STORAGE_DEVICE_INFO::RaidSetInitState>(u"RaidSetInitState"),
    json::row<&STORAGE_DEVICE_INFO::RaidHddErrorDrive>(u"RaidHddErrorDrive"),
    json::row<&STORAGE_DEVICE_INFO::RaidHddErrorStatus>(u"RaidHddErrorStatus"),
    json::row<&STORAGE_DEVICE_INFO::RaidInitInformation>(u"RaidInitInformation"),
    json::row<&STORAGE_DEVICE_INFO::ReadAttrInterface>(u"ReadAttrInterface"),
    json::row<&STORAGE_DEVICE_INFO::ssdWearPercent>(u"ssdWearPercent"),
    json::row<&STORAGE_DEVICE_INFO::SMARTEnabled, kFlag>(u"SMARTEnabled", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::isSolidStateDrive, kFlag>(u"isSolidStateDrive", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::isSSHD, kFlag>(u"isSSHD", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::NVMECNTLID, kInt16>(u"NVMECNTLID", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::NVMeVersion, kLowInt64>(u"NVMeVersion", {.note = "of an int64, the low 32 bits"}),
    json::row<&STORAGE_DEVICE_INFO::MaxDataTransferSize>(u"MaxDataTransferSize"),
    json::row<&STORAGE_DEVICE_INFO::NamespaceAttributeChangedEventSupported>(
        u"NamespaceAttributeChangedEventSupported"),
    json::row<&STORAGE_DEVICE_INFO::SecurityCommandsSupported>(u"SecurityCommandsSupported"),
    json::row<&STORAGE_DEVICE_INFO::FormatNVMCommandsSupported>(u"FormatNVMCommandsSupported"),
    json::row<&STORAGE_DEVICE_INFO::FirmwareCommandsSupported>(u"FirmwareCommandsSupported"),
    json::row<&STORAGE_DEVICE_INFO::NamespaceCommandsSupported>(u"NamespaceCommandsSupported"),
    json::row<&STORAGE_DEVICE_INFO::NVMeHealthLogPerNamespace>(u"NVMeHealthLogPerNamespace"),
    json::row<&STORAGE_DEVICE_INFO::CommandEffectsLogSupported>(u"CommandEffectsLogSupported"),
    json::row<&STORAGE_DEVICE_INFO::NVMeErrorLogPagEntryCapacity>(u"NVMeErrorLogPagEntryCapacity"),
    json::row<&STORAGE_DEVICE_INFO::UsesSpecVendorSpecificAdminCommandFormat>(
        u"UsesSpecVendorSpecificAdminCommandFormat"),
    json::row<&STORAGE_DEVICE_INFO::UsesSpecVendorSpecificCommandFormat>(u"UsesSpecVendorSpecificCommandFormat"),
    json::row<&STORAGE_DEVICE_INFO::WarningCompositeTemperatureThreshold, kInt16>(
        u"WarningCompositeTemperatureThreshold", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::CriticalCompositeTemperatureThreshold, kInt16>(
        u"CriticalCompositeTemperatureThreshold", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::UnallocatedCapacity>(u"UnallocatedCapacity"),
    json::row<&STORAGE_DEVICE_INFO::NumberofRPMBUnits>(u"NumberofRPMBUnits"),
    json::row<&STORAGE_DEVICE_INFO::VolatileWriteCachePresent>(u"VolatileWriteCachePresent"),
    json::row<&STORAGE_DEVICE_INFO::AWUNSize, kInt16>(u"AWUNSize", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::AWUPFSize, kInt16>(u"AWUPFSize", {.note = kZeroNote}),
    json::row<&STORAGE_DEVICE_INFO::NVMeSMARTDataError>(u"NVMeSMARTDataError"),
    json::row<&STORAGE_DEVICE_INFO::isNVMeSMARTDataError, kFlag>(u"isNVMeSMARTDataError", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::NVMeIDBufferError>(u"NVMeIDBufferError"),
    json::row<&STORAGE_DEVICE_INFO::isNVMeIDBufferError, kFlag>(u"isNVMeIDBufferError", {.note = kFalseNote}),
    json::row<&STORAGE_DEVICE_INFO::nvmeHealthLog, kHealthLog>(u"nvmeHealthLog", {.id = 7302}),
    json::row<&STORAGE_DEVICE_INFO::nvmeIdentifyBuff, kIdentify>(u"nvmeIdentifyBuff", {.id = 7303}),
};
constexpr auto kStorageDeviceInfoWriteOrder =
    json::WriteOrder<kStorageDeviceInfoFields>({u"DriveType",
                                                u"ConcNum",
                                                u"interfaceType",
                                                u"DriveNumOnCtlr",
                                                u"DriveNumInBox",
                                                u"CntlrNumInBox",
                                                u"scsi_X",
                                                u"LinkRate",
                                                u"Capacity",
                                                u"SATASpeed",
                                                u"DriveHandleStr",
                                                u"DCOID",
                                                u"hddNumInRaidVol",
                                                u"maxDrivesPerSet",
                                                u"raidSetNumber",
                                                u"busType",
                                                u"TotalLBAs",
                                                u"BlockSize",
                                                u"DiskRPM",
                                                u"UDMASpeed",
                                                u"isSolidStateDrive",
                                                u"SMARTEnabled",
                                                u"NCQSupportFlg",
                                                u"ReadAttrInterface",
                                                u"TCGSupportFlg",
                                                u"SEDSupportFlg",
                                                u"AESSupportFlg",
                                                u"isRemovableDevice",
                                                u"isRaidVolume",
                                                u"isOkUseCDB16",
                                                u"bReserved2",
                                                u"bReserved3",
                                                u"RaidHddErrorDrive",
                                                u"RaidSetInitState",
                                                u"RaidHddErrorStatus",
                                                u"RaidInitInformation",
                                                u"ssdWearPercent",
                                                u"isSSHD",
                                                u"ModelFirmware",
                                                u"ControllerName",
                                                u"ModelString",
                                                u"FirmwareVersion",
                                                u"SerialNumber",
                                                u"SATAMajorVersion",
                                                u"SATAMinorVersion",
                                                u"SCSIadr",
                                                u"sasAddr",
                                                u"bSASLun",
                                                u"NVMECNTLID",
                                                u"NVMeVersion",
                                                u"MaxDataTransferSize",
                                                u"NamespaceAttributeChangedEventSupported",
                                                u"SecurityCommandsSupported",
                                                u"FormatNVMCommandsSupported",
                                                u"FirmwareCommandsSupported",
                                                u"NamespaceCommandsSupported",
                                                u"NVMeHealthLogPerNamespace",
                                                u"CommandEffectsLogSupported",
                                                u"NVMeErrorLogPagEntryCapacity",
                                                u"UsesSpecVendorSpecificAdminCommandFormat",
                                                u"UsesSpecVendorSpecificCommandFormat",
                                                u"WarningCompositeTemperatureThreshold",
                                                u"CriticalCompositeTemperatureThreshold",
                                                u"UnallocatedCapacity",
                                                u"NumberofRPMBUnits",
                                                u"VolatileWriteCachePresent",
                                                u"AWUNSize",
                                                u"AWUPFSize",
                                                u"NVMeSMARTDataError",
                                                u"isNVMeSMARTDataError",
                                                u"NVMeIDBufferError",
                                                u"isNVMeIDBufferError",
                                                u"nvmeHealthLog",
                                                u"nvmeIdentifyBuff"});
constexpr json::RecordTable kStorageDeviceInfoTable = json::Table(
    {.name = "STORAGE_DEVICE_INFO",
     .fields = kStorageDeviceInfoFields,
     .writeOrder = kStorageDeviceInfoWriteOrder,
     .note = "Nothing of it is read when the key `DriveType` is missing. The records in it always go out."});

}  // namespace

const json::RecordTable& SCSIAddress::Table() { return kAddressTable; }

void STORAGE_DEVICE_INFO::Deserialize(const json::Value* value) {
  const bool hasType = value == nullptr || !value->IsObject() || json::FindMember(*value, u"DriveType") != nullptr;
  json::ReadRecord(kStorageDeviceInfoTable, this, hasType ? value : nullptr);
}

json::Serialized STORAGE_DEVICE_INFO::Serialize(json::Document* inComingDoc) const {
  return json::WriteRecord(kStorageDeviceInfoTable, this, inComingDoc);
}

const json::RecordTable& STORAGE_DEVICE_INFO::Table() { return kStorageDeviceInfoTable; }

}  // namespace ZQ_RMT_MODELS
