#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "json/record.h"
#include "models/devices/nvme_health_info_log.h"
#include "models/devices/nvme_identify_controller_data.h"

namespace ZQ_RMT_MODELS {

// The SCSI address of a disk: an adapter, and a bus, target and logical unit on it.
class SCSIAddress : public json::Record<SCSIAddress> {
 public:
  std::int32_t Adapter = 0;
  std::int32_t Bus = 0;
  std::int32_t Target = 0;
  std::int32_t Lun = 0;

  static const json::RecordTable& Table();
};

// The identity of a disk: where it is attached, what it is and supports, and what an NVMe disk reports about itself.
// The wire names no unit but where one is given here. Members whose names end in Supported or Present are texts.
class STORAGE_DEVICE_INFO {
 public:
  std::int32_t DriveType = 0;
  std::int32_t interfaceType = 0;
  std::int32_t DriveNumOnCtlr = 0;
  std::int32_t DriveNumInBox = 0;
  std::int32_t CntlrNumInBox = 0;
  std::int32_t ConcNum = 0;
  std::int32_t scsi_X = 0;
  std::int32_t LinkRate = 0;
  std::int32_t Capacity = 0;
  std::int32_t SATASpeed = 0;
  std::int32_t hddNumInRaidVol = 0;
  std::int32_t maxDrivesPerSet = 0;
  std::int32_t raidSetNumber = 0;
  std::int32_t busType = 0;
  std::int64_t TotalLBAs = 0;   // logical blocks
  std::uint32_t BlockSize = 0;  // bytes; written as a signed number, so that 4294967295 comes back as -1
  std::uint16_t DiskRPM = 0;    // revolutions per minute
  std::uint16_t UDMASpeed = 0;
  std::u16string ModelFirmware;
  std::u16string Modelfirmware1;
  std::u16string isWriteSupported;
  std::u16string DevInst;
  std::u16string ControllerName;
  std::u16string VolumeName;
  std::u16string DriveTypeStr;
  std::u16string NameAndNumber;
  std::u16string DriveHandleStr;
  std::u16string ModelString;
  std::u16string FirmwareVersion;
  std::u16string SerialNumber;
  std::u16string raidTypeStr;
  std::u16string raidNumber;
  std::u16string DCOID;
  std::u16string ControllerPosition;
  std::u16string DeviceID;
  std::u16string SATAMajorVersion;
  std::u16string SATAMinorVersion;
  bool NCQSupportFlg = false;
  bool TCGSupportFlg = false;
  bool SEDSupportFlg = false;
  bool AESSupportFlg = false;
  bool isRemovableDevice = false;
  bool isRaidVolume = false;
  bool isOkUseCDB16 = false;
  bool bReserved2 = false;
  bool bReserved3 = false;
  std::array<std::uint8_t, 8> sasAddr{};  // the SAS address
  std::array<std::uint8_t, 8> bSASLun{};  // the logical unit number, of 8 bytes in SCSI
  SCSIAddress SCSIadr;
  std::uint64_t hSCSIhandle = 0;  // a handle, which means nothing outside of the sender's process; never written
  std::int32_t RaidSetInitState = 0;
  std::int32_t RaidHddErrorDrive = 0;
  std::int32_t RaidHddErrorStatus = 0;
  std::int32_t RaidInitInformation = 0;
  std::int32_t ReadAttrInterface = 0;
  std::int32_t ssdWearPercent = 0;
  bool SMARTEnabled = false;
  bool isSolidStateDrive = false;
  bool isSSHD = false;
  // What an NVMe disk's Identify Controller data says, some of it as text. The data itself is in nvmeIdentifyBuff.
  std::int16_t NVMECNTLID = 0;
  std::int32_t NVMeVersion = 0;
  std::int32_t MaxDataTransferSize = 0;
  std::u16string NamespaceAttributeChangedEventSupported;
  std::u16string SecurityCommandsSupported;
  std::u16string FormatNVMCommandsSupported;
  std::u16string FirmwareCommandsSupported;
  std::u16string NamespaceCommandsSupported;
  std::u16string NVMeHealthLogPerNamespace;
  std::u16string CommandEffectsLogSupported;
  std::int32_t NVMeErrorLogPagEntryCapacity = 0;
  std::u16string UsesSpecVendorSpecificAdminCommandFormat;
  std::u16string UsesSpecVendorSpecificCommandFormat;
  std::int16_t WarningCompositeTemperatureThreshold = 0;
  std::int16_t CriticalCompositeTemperatureThreshold = 0;
  std::int32_t UnallocatedCapacity = 0;
  std::int32_t NumberofRPMBUnits = 0;
  std::u16string VolatileWriteCachePresent;
  std::int16_t AWUNSize = 0;
  std::int16_t AWUPFSize = 0;
  std::u16string NVMeSMARTDataError;
  bool isNVMeSMARTDataError = false;
  std::u16string NVMeIDBufferError;
  bool isNVMeIDBufferError = false;
  NVME_HEALTH_INFO_LOG_STRUCT nvmeHealthLog;
  NVME_IDENTIFY_CONTROLLER_DATA_STRUCT nvmeIdentifyBuff;

  // Reads nothing unless `value` has a DriveType, of whatever kind.
  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* inComingDoc) const;
  static const json::RecordTable& Table();
};

}  // namespace ZQ_RMT_MODELS
