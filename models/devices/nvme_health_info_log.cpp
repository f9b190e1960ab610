#include "models/devices/nvme_health_info_log.h"

#include "json/types.h"
#include "models/devices/image_table.h"

namespace ZQ_RMT_MODELS {
namespace {

constexpr char kHealthInfoLogName[] = "NVME_HEALTH_INFO_LOG_STRUCT";

constexpr ImageField kHealthInfoLogFields[] = {
    // Critical Warning, one bit for each condition.
    bits(u"AvailableSpaceLow", 0, 0, 0, {.id = 7701}),
    bits(u"TemperatureThreshold", 0, 1, 1, {.id = 7702}),
    bits(u"ReliabilityDegraded", 0, 2, 2, {.id = 7703}),
    bits(u"ReadOnly", 0, 3, 3, {.id = 7704}),
    bits(u"VolatileMemoryBackupDeviceFailed", 0, 4, 4),
    bits(u"Reserved", 0, 5, 7),
    // The composite temperature in kelvins, least significant byte first.
    bytes(u"Temperature", 1, 2),
    // In percent. PercentageUsed can exceed 100, and is 255 for anything above 254.
    number(u"AvailableSpare", 3, 8, {.id = 7707}),
    number(u"AvailableSpareThreshold", 4, 8, {.id = 7708}),
    number(u"PercentageUsed", 5, 8, {.id = 7709}),
    bytes(u"Reserved0", 6, 26),
    // Numbers of 128 bits, least significant byte first. Data units are thousands of 512 bytes, rounded up; the busy
    // time is in minutes. Hosts expect two of the counters not to come back.
    bytes(u"DataUnitRead", 32, 16),
    bytes(u"DataUnitWritten", 48, 16),
    bytes(u"HostReadCommands", 64, 16, {.written = false}),
    bytes(u"HostWrittenCommands", 80, 16),
    bytes(u"ControllerBusyTime", 96, 16),
    bytes(u"PowerCycle", 112, 16),
    bytes(u"PowerOnHours", 128, 16),
    bytes(u"UnsafeShutdowns", 144, 16, {.written = false}),
    bytes(u"MediaErrors", 160, 16),
    bytes(u"ErrorInfoLogEntryCount", 176, 16),
    // Minutes above the warning and above the critical composite temperature.
    number(u"WarningCompositeTemperatureTime", 192, 32, {.id = 7710, .writtenSigned = true}),
    number(u"CriticalCompositeTemperatureTime", 196, 32, {.id = 7711, .writtenSigned = true}),
    // In kelvins; 0 for a sensor that isn't there.
    number(u"TemperatureSensor1", 200, 16, {.id = 7712}),
    number(u"TemperatureSensor2", 202, 16, {.id = 7713}),
    number(u"TemperatureSensor3", 204, 16, {.id = 7714}),
    number(u"TemperatureSensor4", 206, 16, {.id = 7715}),
    number(u"TemperatureSensor5", 208, 16, {.id = 7716}),
    number(u"TemperatureSensor6", 210, 16, {.id = 7717}),
    number(u"TemperatureSensor7", 212, 16, {.id = 7718}),
    number(u"TemperatureSensor8", 214, 16, {.id = 7719}),
    bytes(u"Reserved1", 216, 296),
};
static_assert(Covers(kHealthInfoLogFields, {}, 512));
static_assert(std::size(kHealthInfoLogFields) == 32 && WrittenCount(kHealthInfoLogFields) == 30);
static_assert(FirstBit(kHealthInfoLogFields, u"DataUnitRead") == 32 * 8 &&
              FirstBit(kHealthInfoLogFields, u"TemperatureSensor1") == 200 * 8);

}  // namespace

void NVME_HEALTH_INFO_LOG_STRUCT::Deserialize(const json::Value* value) {
  ReadImage(kHealthInfoLogName, kHealthInfoLogFields, bytes, value);
}

json::Serialized NVME_HEALTH_INFO_LOG_STRUCT::Serialize(json::Document* inComingDoc) const {
  return WriteImage(kHealthInfoLogName, kHealthInfoLogFields, bytes, inComingDoc);
}

std::span<const ImageField> NVME_HEALTH_INFO_LOG_STRUCT::Fields() { return kHealthInfoLogFields; }

}  // namespace ZQ_RMT_MODELS
