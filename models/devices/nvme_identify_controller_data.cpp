#include "models/devices/nvme_identify_controller_data.h"

#include "json/types.h"
#include "models/devices/image_table.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr char kIdentifyControllerName[] = "NVME_IDENTIFY_CONTROLLER_DATA_STRUCT";

constexpr ImageField kIdentifyControllerFields[] = {
    // PCI vendor and subsystem vendor. The serial number, model number and firmware revision are ASCII, padded with
    // blanks.
    number(u"VID", 0, 16, {.id = 7101}),
    number(u"SSVID", 2, 16, {.id = 7102}),
    bytes(u"SN", 4, 20),
    bytes(u"MN", 24, 40),
    bytes(u"FR", 64, 8),
    // The recommended arbitration burst is 2^RAB commands.
    number(u"RAB", 72, 8, {.id = 7103}),
    bytes(u"IEEE", 73, 3),
    // CMIC: multi-path I/O and namespace sharing.
    bits(u"MultiPCIePorts", 76, 0, 0, {.id = 7104, .line = "Set CMIC.MultiPCIePorts:"}),
    bits(u"MultiControllers", 76, 1, 1, {.id = 7105, .line = "Set CMIC.MultiControllers:"}),
    bits(u"SRIOV", 76, 2, 2, {.id = 7106, .line = "Set CMIC.SRIOV:"}),
    bits(u"CMICReserved", 76, 4, 7, {.id = 7108, .line = "Set CMIC.Reserved:"}),
    // The largest transfer is 2^MDTS times the smallest memory page; 0 sets no limit.
    number(u"MDTS", 77, 8, {.id = 7109}),
    number(u"CNTLID", 78, 16, {.id = 7110}),
    number(u"VER", 80, 32, {.id = 7111}),
    // Latencies of the resume from and the entry into D3, in microseconds.
    number(u"RTD3R", 84, 32, {.id = 7112}),
    number(u"RTD3E", 88, 32, {.id = 7113}),
    // OAES: the optional asynchronous events that are supported.
    bits(u"OAESReserved0", 92, 0, 7, {.id = 7114, .line = "Set OAES.Reserved0:"}),
    bits(u"NamespaceAttributeChanged", 92, 8, 8, {.id = 7115, .line = "Set OAES.NamespaceAttributeChanged:"}),
    bits(u"FirmwareActivation", 92, 9, 9, {.id = 7116, .line = "Set OAES.FirmwareActivation:"}),
    bits(u"OAESReserved1", 92, 10, 10, {.id = 7117, .line = "Set OAES.Reserved1:"}),
    bits(u"AsymmetricAccessChanged", 92, 11, 11, {.id = 7118, .line = "Set OAES.AsymmetricAccessChanged:"}),
    bits(u"PredictableLatencyAggregateLogChanged", 92, 12, 12,
         {.id = 7119, .line = "Set OAES.PredictableLatencyAggregateLogChanged:"}),
    bits(u"LbaStatusChanged", 92, 13, 13, {.id = 7120, .line = "Set OAES.LbaStatusChanged:"}),
    bits(u"EnduranceGroupAggregateLogChanged", 92, 14, 14,
         {.id = 7121, .line = "Set OAES.EnduranceGroupAggregateLogChanged:"}),
    bits(u"OAESReserved2", 92, 15, 26, {.id = 7122, .line = "Set OAES.Reserved2:"}),
    bits(u"ZoneInformation", 92, 27, 27, {.id = 7123, .line = "Set OAES.ZoneInformation:"}),
    bits(u"OAESReserved3", 92, 28, 31, {.id = 7124, .line = "Set OAES.Reserved3:"}),
    // CTRATT: attributes of the controller.
    bits(u"HostIdentifier128Bit", 96, 0, 0, {.id = 7125, .line = "Set CTRATT.HostIdentifier128Bit:"}),
    bits(u"NOPSPMode", 96, 1, 1, {.id = 7126, .line = "Set CTRATT.NOPSPMode:"}),
    bits(u"NVMSets", 96, 2, 2, {.id = 7127, .line = "Set CTRATT.NVMSets:"}),
    bits(u"ReadRecoveryLevels", 96, 3, 3, {.id = 7128, .line = "Set CTRATT.ReadRecoveryLevels:"}),
    bits(u"EnduranceGroups", 96, 4, 4, {.id = 7129, .line = "Set CTRATT.EnduranceGroups:"}),
    bits(u"PredictableLatencyMode", 96, 5, 5, {.id = 7130, .line = "Set CTRATT.PredictableLatencyMode:"}),
    bits(u"TBKAS", 96, 6, 6, {.id = 7131, .line = "Set CTRATT.TBKAS:"}),
    bits(u"NamespaceGranularity", 96, 7, 7, {.id = 7132, .line = "Set CTRATT.NamespaceGranularity:"}),
    bits(u"SQAssociations", 96, 8, 8, {.id = 7133, .line = "Set CTRATT.SQAssociations:"}),
    bits(u"UUIDList", 96, 9, 9, {.id = 7134, .line = "Set CTRATT.UUIDList:"}),
    bits(u"CTRATTReserved0", 96, 10, 31, {.id = 7135, .line = "Set CTRATT.Reserved0:"}),
    // RRLS: the read recovery levels that are supported.
    bits(u"ReadRecoveryLevel0", 100, 0, 0, {.id = 7136, .line = "Set RRLS.ReadRecoveryLevel0:"}),
    bits(u"ReadRecoveryLevel1", 100, 1, 1, {.id = 7137, .line = "Set RRLS.ReadRecoveryLevel1:"}),
    bits(u"ReadRecoveryLevel2", 100, 2, 2),
    bits(u"ReadRecoveryLevel3", 100, 3, 3, {.id = 7139, .line = "Set RRLS.ReadRecoveryLevel3:"}),
    bits(u"ReadRecoveryLevel4", 100, 4, 4, {.id = 7140, .line = "Set RRLS.ReadRecoveryLevel4:"}),
    bits(u"ReadRecoveryLevel5", 100, 5, 5, {.id = 7141, .line = "Set RRLS.ReadRecoveryLevel5:"}),
    bits(u"ReadRecoveryLevel6", 100, 6, 6, {.id = 7142, .line = "Set RRLS.ReadRecoveryLevel6:"}),
    bits(u"ReadRecoveryLevel7", 100, 7, 7, {.id = 7143, .line = "Set RRLS.ReadRecoveryLevel7:"}),
    bits(u"ReadRecoveryLevel8", 100, 8, 8, {.id = 7144, .line = "Set RRLS.ReadRecoveryLevel8:"}),
    bits(u"ReadRecoveryLevel9", 100, 9, 9, {.id = 7145, .line = "Set RRLS.ReadRecoveryLevel9:"}),
    bits(u"ReadRecoveryLevel10", 100, 10, 10, {.id = 7146, .line = "Set RRLS.ReadRecoveryLevel10:"}),
    bits(u"ReadRecoveryLevel11", 100, 11, 11, {.id = 7147, .line = "Set RRLS.ReadRecoveryLevel11:"}),
    bits(u"ReadRecoveryLevel12", 100, 12, 12, {.id = 7148, .line = "Set RRLS.ReadRecoveryLevel12:"}),
    bits(u"ReadRecoveryLevel13", 100, 13, 13, {.id = 7149, .line = "Set RRLS.ReadRecoveryLevel13:"}),
    bits(u"ReadRecoveryLevel14", 100, 14, 14, {.id = 7150, .line = "Set RRLS.ReadRecoveryLevel14:"}),
    bits(u"ReadRecoveryLevel15", 100, 15, 15, {.id = 7151, .line = "Set RRLS.ReadRecoveryLevel15:"}),
    bytes(u"Reserved0", 102, 9),
    number(u"CNTRLTYPE", 111, 8, {.id = 1}),
    bytes(u"FGUID", 112, 16),
    // Command retry delays, in units of 100 ms.
    number(u"CRDT1", 128, 16, {.id = 1}),
    number(u"CRDT2", 130, 16, {.id = 1}),
    number(u"CRDT3", 132, 16, {.id = 1}),
    bytes(u"Reserved0_1", 134, 106, {.written = false}),
    bytes(u"ReservedForManagement", 240, 16),
    // OACS: the optional admin commands that are supported.
    bits(u"SecurityCommands", 256, 0, 0, {.id = 1, .line = "Set OACS.SecurityCommands:"}),
    bits(u"FormatNVM", 256, 1, 1, {.id = 1, .line = "Set OACS.FormatNVM:"}),
    bits(u"FirmwareCommands", 256, 2, 2, {.id = 1, .line = "Set OACS.FirmwareCommands:"}),
    bits(u"NamespaceCommands", 256, 3, 3, {.id = 1, .line = "Set OACS.NamespaceCommands:"}),
    bits(u"DeviceSelfTest", 256, 4, 4, {.id = 1, .line = "Set OACS.DeviceSelfTest:"}),
    bits(u"Directives", 256, 5, 5, {.id = 1, .line = "Set OACS.Directives:"}),
    bits(u"NVMeMICommands", 256, 6, 6, {.id = 1, .line = "Set OACS.NVMeMICommands:"}),
    bits(u"VirtualizationMgmt", 256, 7, 7, {.id = 1, .line = "Set OACS.VirtualizationMgmt:"}),
    bits(u"DoorBellBufferConfig", 256, 8, 8, {.id = 1, .line = "Set OACS.DoorBellBufferConfig:"}),
    bits(u"GetLBAStatus", 256, 9, 9, {.id = 1, .line = "Set OACS.GetLBAStatus:"}),
    bits(u"OACSReserved", 256, 10, 15),
    // Limits on concurrent Abort and Asynchronous Event Request commands, one less than the number.
    number(u"ACL", 258, 8, {.id = 1}),
    number(u"AERL", 259, 8, {.id = 1}),
    // FRMW: firmware updates.
    bits(u"Slot1ReadOnly", 260, 0, 0, {.id = 1, .line = "Set FRMW.Slot1ReadOnly:"}),
    bits(u"SlotCount", 260, 1, 3, {.id = 1, .line = "Set FRMW.SlotCount:"}),
    bits(u"ActivationWithoutReset", 260, 4, 4, {.id = 1, .line = "Set FRMW.ActivationWithoutReset:"}),
    bits(u"FRMWReserved", 260, 5, 7, {.id = 1, .line = "Set FRMW.Reserved:"}),
    // LPA: attributes of the log pages.
    bits(u"SmartPagePerNamespace", 261, 0, 0, {.id = 1, .line = "Set LPA.SmartPagePerNamespace:"}),
    bits(u"CommandEffectsLog", 261, 1, 1, {.id = 1, .line = "Set LPA.CommandEffectsLog:"}),
    bits(u"LogPageExtendedData", 261, 2, 2, {.id = 1, .line = "Set LPA.LogPageExtendedData:"}),
    bits(u"TelemetrySupport", 261, 3, 3, {.id = 1, .line = "Set LPA.TelemetrySupport:"}),
    bits(u"PersistentEventLog", 261, 4, 4, {.id = 1, .line = "Set LPA.PersistentEventLog:"}),
    bits(u"LPAReserved0", 261, 5, 5, {.id = 1, .line = "Set LPA.Reserved0:"}),
    bits(u"TelemetryDataArea4", 261, 6, 6, {.id = 1, .line = "Set LPA.TelemetryDataArea4:"}),
    bits(u"LPAReserved1", 261, 7, 7, {.id = 1, .line = "Set LPA.Reserved1:"}),
    // The entries of the error log and the power states, one less than the number of each.
    number(u"ELPE", 262, 8, {.id = 1}),
    number(u"NPSS", 263, 8, {.id = 1}),
    // AVSCC: the format of vendor specific admin commands.
    bits(u"CommandFormatInSpec", 264, 0, 0, {.id = 1, .line = "Set AVSCC.CommandFormatInSpec:"}),
    bits(u"AVSCCReserved", 264, 1, 7, {.id = 1, .line = "Set AVSCC.Reserved:"}),
    // APSTA: autonomous power state transitions.
    bits(u"APSTASupported", 265, 0, 0, {.id = 1, .line = "Set APSTA.Supported:"}),
    bits(u"APSTAReserved", 265, 1, 7, {.id = 1, .line = "Set APSTA.Reserved:"}),
    // The warning and the critical composite temperature in kelvins; 0 if the controller reports none.
    number(u"WCTEMP", 266, 16, {.id = 1}),
    number(u"CCTEMP", 268, 16, {.id = 1}),
    // The maximum time for a firmware activation, in units of 100 ms; 0 if undefined.
    number(u"MTFA", 270, 16, {.id = 1}),
    // The preferred and the minimum size of the host memory buffer, in units of 4 KiB.
    number(u"HMPRE", 272, 32, {.id = 1}),
    number(u"HMMIN", 276, 32, {.id = 1}),
    // The total and the unallocated capacity in bytes, numbers of 128 bits.
    bytes(u"TNVMCAP", 280, 16),
    bytes(u"UNVMCAP", 296, 16),
    // RPMBS: replay protected memory blocks. Sizes are in units of 128 KiB and of 512 bytes, one less than the number.
    bits(u"RPMBUnitCount", 312, 0, 2, {.id = 1, .line = "Set RPMBS.RPMBUnitCount:"}),
    bits(u"AuthenticationMethod", 312, 3, 5, {.id = 1, .line = "Set RPMBS.AuthenticationMethod:"}),
    bits(u"RPMBSReserved0", 312, 6, 15, {.id = 1, .line = "Set RPMBS.Reserved0:"}),
    bits(u"TotalSize", 312, 16, 23, {.id = 1, .line = "Set RPMBS.TotalSize:"}),
    bits(u"AccessSize", 312, 24, 31, {.id = 1, .line = "Set RPMBS.AccessSize:"}),
    // The time of an extended device self-test, in minutes.
    number(u"EDSTT", 316, 16, {.id = 1}),
    number(u"DSTO", 318, 8, {.id = 1}),
    // The granularity of firmware updates, in units of 4 KiB.
    number(u"FWUG", 319, 8, {.id = 1}),
    // The granularity of the keep alive timer, in units of 100 ms; 0 if it isn't supported.
    number(u"KAS", 320, 16, {.id = 1}),
    // HCTMA: host controlled thermal management, between two temperatures in kelvins.
    bits(u"HCTMASupported", 322, 0, 0, {.id = 1, .line = "Set HCTMA.Supported:"}),
    bits(u"HCTMAReserved", 322, 1, 15, {.id = 1, .line = "Set HCTMA.Reserved:"}),
    number(u"MNTMT", 324, 16, {.id = 1}),
    number(u"MXTMT", 326, 16, {.id = 1}),
    // SANICAP: the sanitize operations that are supported.
    bits(u"CryptoErase", 328, 0, 0, {.id = 1, .line = "Set SANICAP.CryptoErase:"}),
    bits(u"BlockErase", 328, 1, 1, {.id = 1, .line = "Set SANICAP.BlockErase:"}),
    bits(u"Overwrite", 328, 2, 2, {.id = 1, .line = "Set SANICAP.Overwrite:"}),
    bits(u"SANICAPReserved", 328, 3, 28, {.id = 1, .line = "Set SANICAP.Reserved:"}),
    bits(u"NDI", 328, 29, 29, {.id = 1, .line = "Set SANICAP.NDI:"}),
    bits(u"NODMMAS", 328, 30, 31, {.id = 1, .line = "Set SANICAP.NODMMAS:"}),
    // The smallest descriptor entry of the host memory buffer, in units of 4 KiB, and the most entries.
    number(u"HMMINDS", 332, 32, {.id = 1}),
    number(u"HMMAXD", 336, 16, {.id = 1}),
    number(u"NSETIDMAX", 338, 16, {.id = 1}),
    number(u"ENDGIDMAX", 340, 16, {.id = 1}),
    // The time of a transition between states of asymmetric namespace access, in seconds.
    number(u"ANATT", 342, 8, {.id = 1}),
    // ANACAP: asymmetric namespace access.
    bits(u"OptimizedState", 343, 0, 0, {.id = 1, .line = "Set ANACAP.OptimizedState:"}),
    bits(u"NonOptimizedState", 343, 1, 1, {.id = 1, .line = "Set ANACAP.NonOptimizedState:"}),
    bits(u"InaccessibleState", 343, 2, 2, {.id = 1, .line = "Set ANACAP.InaccessibleState:"}),
    bits(u"PersistentLossState", 343, 3, 3, {.id = 1, .line = "Set ANACAP.PersistentLossState:"}),
    bits(u"ChangeState", 343, 4, 4, {.id = 1, .line = "Set ANACAP.ChangeState:"}),
    bits(u"ANACAPReserved", 343, 5, 5, {.id = 1, .line = "Set ANACAP.Reserved:"}),
    bits(u"StaticANAGRPID", 343, 6, 6, {.id = 1, .line = "Set ANACAP.StaticANAGRPID:"}),
    bits(u"SupportNonZeroANAGRPID", 343, 7, 7, {.id = 1, .line = "Set ANACAP.SupportNonZeroANAGRPID:"}),
    number(u"ANAGRPMAX", 344, 32, {.id = 1}),
    number(u"NANAGRPID", 348, 32, {.id = 1}),
    // The size of the persistent event log, in units of 64 KiB.
    number(u"PELS", 352, 32, {.id = 1}),
    bytes(u"Reserved1", 356, 156, {.written = false}),
    // SQES and CQES: a queue entry of size n has 2^n bytes.
    bits(u"SQESRequiredEntrySize", 512, 0, 3, {.id = 1, .line = "Set SQES.RequiredEntrySize:"}),
    bits(u"SQESMaxEntrySize", 512, 4, 7, {.id = 1, .line = "Set SQES.MaxEntrySize:"}),
    bits(u"CQESRequiredEntrySize", 513, 0, 3, {.id = 1, .line = "Set CQES.RequiredEntrySize:"}),
    bits(u"CQESMaxEntrySize", 513, 4, 7, {.id = 1, .line = "Set CQES.MaxEntrySize:"}),
    number(u"MAXCMD", 514, 16, {.id = 1}),
    // The number of namespaces.
    number(u"NN", 516, 32, {.id = 1}),
    // ONCS: the optional commands of the NVM command set that are supported.
    bits(u"Compare", 520, 0, 0, {.id = 1, .line = "Set ONCS.Compare:"}),
    bits(u"WriteUncorrectable", 520, 1, 1, {.id = 1, .line = "Set ONCS.WriteUncorrectable:"}),
    bits(u"DatasetManagement", 520, 2, 2, {.id = 1, .line = "Set ONCS.DatasetManagement:"}),
    bits(u"WriteZeroes", 520, 3, 3, {.id = 1, .line = "Set ONCS.WriteZeroes:"}),
    bits(u"FeatureField", 520, 4, 4, {.id = 1, .line = "Set ONCS.FeatureField:"}),
    bits(u"ONCSReservations", 520, 5, 5, {.id = 1, .line = "Set ONCS.Reservations:"}),
    bits(u"Timestamp", 520, 6, 6, {.id = 1, .line = "Set ONCS.Timestamp:"}),
    bits(u"Verify", 520, 7, 7, {.id = 1, .line = "Set ONCS.Verify:"}),
    bits(u"ONCSReserved", 520, 8, 15, {.id = 1, .line = "Set ONCS.Reserved:"}),
    // FUSES: fused operations.
    bits(u"CompareAndWrite", 522, 0, 0, {.id = 1, .line = "Set FUSES.CompareAndWrite:"}),
    bits(u"FUSESReserved", 522, 1, 15, {.id = 1, .line = "Set FUSES.Reserved:"}),
    // FNA: attributes of the Format NVM command.
    bits(u"FormatApplyToAll", 524, 0, 0, {.id = 1, .line = "Set FNA.FormatApplyToAll:"}),
    bits(u"SecureEraseApplyToAll", 524, 1, 1, {.id = 1, .line = "Set FNA.SecureEraseApplyToAll:"}),
    bits(u"CryptographicEraseSupported", 524, 2, 2, {.id = 1, .line = "Set FNA.CryptographicEraseSupported:"}),
    bits(u"FormatSupportNSIDAllF", 524, 3, 3, {.id = 1, .line = "Set FNA.FormatSupportNSIDAllF:"}),
    bits(u"FNAReserved", 524, 4, 7, {.id = 1, .line = "Set FNA.Reserved:"}),
    // VWC: the volatile write cache.
    bits(u"Present", 525, 0, 0, {.id = 1, .line = "Set VWC.Present:"}),
    bits(u"FlushBehavior", 525, 1, 2, {.id = 1, .line = "Set VWC.FlushBehavior:"}),
    bits(u"VWCReserved", 525, 3, 7, {.id = 1, .line = "Set VWC.Reserved:"}),
    // Atomic write units, normally and on power failure, in logical blocks, one less than the number.
    number(u"AWUN", 526, 16, {.id = 1}),
    number(u"AWUPF", 528, 16, {.id = 1}),
    // NVSCC: the format of vendor specific I/O commands. Its bit has the key of AVSCC's bit: both are read from the one
    // member, and only that of AVSCC is written.
    bits(u"CommandFormatInSpec", 530, 0, 0,
         {.id = 1, .line = "Set NVSCC.CommandFormatInSpec:", .written = false, .repeatsKey = true}),
    bits(u"NVSCCReserved", 530, 1, 7, {.id = 1, .line = "Set NVSCC.Reserved:"}),
    // NWPC: namespace write protection.
    bits(u"WriteProtect", 531, 0, 0, {.id = 1, .line = "Set NWPC.WriteProtect:"}),
    bits(u"UntilPowerCycle", 531, 1, 1, {.id = 1, .line = "Set NWPC.UntilPowerCycle:"}),
    bits(u"Permanent", 531, 2, 2, {.id = 1, .line = "Set NWPC.Permanent:"}),
    bits(u"NWPCReserved", 531, 3, 7, {.id = 1, .line = "Set NWPC.Reserved:"}),
    // The atomic compare and write unit, in logical blocks, one less than the number.
    number(u"ACWU", 532, 16, {.id = 1}),
    bytes(u"Reserved4", 534, 2),
    // SGLS: scatter gather lists.
    bits(u"SGLSupported", 536, 0, 1, {.id = 1, .line = "Set SGLS.SGLSupported:"}),
    bits(u"KeyedSGLData", 536, 2, 2, {.id = 1, .line = "Set SGLS.KeyedSGLData:"}),
    bits(u"SGLSReserved0", 536, 3, 15, {.id = 1, .line = "Set SGLS.Reserved0:"}),
    bits(u"BitBucketDescrSupported", 536, 16, 16, {.id = 1, .line = "Set SGLS.BitBucketDescrSupported:"}),
    bits(u"ByteAlignedContiguousPhysicalBuffer", 536, 17, 17,
         {.id = 1, .line = "Set SGLS.ByteAlignedContiguousPhysicalBuffer:"}),
    bits(u"SGLLengthLargerThanDataLength", 536, 18, 18, {.id = 1, .line = "Set SGLS.SGLLengthLargerThanDataLength:"}),
    bits(u"MPTRSGLDescriptor", 536, 19, 19, {.id = 1, .line = "Set SGLS.MPTRSGLDescriptor:"}),
    bits(u"AddressFieldSGLDataBlock", 536, 20, 20, {.id = 1, .line = "Set SGLS.AddressFieldSGLDataBlock:"}),
    bits(u"TransportSGLData", 536, 21, 21, {.id = 1, .line = "Set SGLS.TransportSGLData:"}),
    bits(u"SGLSReserved1", 536, 22, 31, {.id = 1, .line = "Set SGLS.Reserved1:"}),
    number(u"MNAN", 540, 32, {.id = 1}),
    bytes(u"Reserved6", 544, 224, {.written = false}),
    // The NVM subsystem's qualified name, UTF-8 with a zero byte at its end.
    bytes(u"SUBNQN", 768, 256, {.written = false}),
    bytes(u"Reserved7", 1024, 768, {.written = false}),
    bytes(u"Reserved8", 1792, 256, {.written = false}),
    // The vendor's own.
    bytes(u"VS", 3072, 1024, {.written = false}),
};
// Without a key are bit 3 of CMIC and the power state descriptors.
constexpr ImageGap kIdentifyControllerGaps[] = {{76 * 8 + 3, 1}, {2048 * 8, 1024 * 8}};
static_assert(Covers(kIdentifyControllerFields, kIdentifyControllerGaps, 4096));
static_assert(std::size(kIdentifyControllerFields) == 187 && WrittenCount(kIdentifyControllerFields) == 179);
static_assert(FirstBit(kIdentifyControllerFields, u"VER") == 80 * 8 &&
              FirstBit(kIdentifyControllerFields, u"SecurityCommands") == 256 * 8);
static_assert(FirstBit(kIdentifyControllerFields, u"NN") == 516 * 8 &&
              FirstBit(kIdentifyControllerFields, u"SUBNQN") == 768 * 8);

}  // namespace

void NVME_IDENTIFY_CONTROLLER_DATA_STRUCT::Deserialize(const json::Value* value) {
  ReadImage(kIdentifyControllerName, kIdentifyControllerFields, bytes, value);
}

json::Serialized NVME_IDENTIFY_CONTROLLER_DATA_STRUCT::Serialize(json::Document* inComingDoc) const {
  return WriteImage(kIdentifyControllerName, kIdentifyControllerFields, bytes, inComingDoc);
}

std::span<const ImageField> NVME_IDENTIFY_CONTROLLER_DATA_STRUCT::Fields() { return kIdentifyControllerFields; }

}  // namespace ZQ_RMT_MODELS
