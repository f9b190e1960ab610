// What a record keeps of one text when a second one is read into it.

#include <gtest/gtest.h>
#include <rapidjson/pointer.h>

#include <cstdlib>

#include "json/access.h"
#include "json/types.h"
#include "models/core/device_info.h"
#include "models/core/rmt_data_contract.h"
#include "tests/support/process.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace ZQ_RMT_MODELS;

// This test program logs to a directory of its own.
const TempDirectory logDirectory;
[[maybe_unused]] const bool set = (SetEnvironment("ZQRMT_LOG_DIRECTORY", logDirectory.Path().string()), true);

// The value at `path` of a record after it has read both texts.
template <class Record>
std::u16string Value(const char16_t* first, const char16_t* second, const char16_t* path) {
  Record record;
  for (const char16_t* text : {first, second}) {
    json::Document document;
    EXPECT_TRUE(json::ParseText(text, document));
    record.Deserialize(&document);
  }
  const json::Serialized written = record.Serialize(nullptr);
  const json::Value* value = rapidjson::GenericPointer<json::Value>(path).Get(written.value);
  return value != nullptr ? json::ValueToText(*value) : u"(none)";
}

using Disk = STORAGE_DEVICE_INFO;
constexpr const char16_t* kDisk =
    uR"({"DriveType":1,"Capacity":5,"TotalLBAs":6,"ModelString":"m","SCSIadr":{"Bus":2},"sasAddr":[1,2,3,4,5,6,7,8],
    "DiskRPM":7,"BlockSize":8,"NVMECNTLID":9,"isRaidVolume":true,"nvmeIdentifyBuff":{"SlotCount":7,"IEEE":[1,2,3]}})";
constexpr const char16_t* kDrive = uR"({"DriveType":2})";

const struct {
  std::u16string (*value)(const char16_t*, const char16_t*, const char16_t*);
  const char16_t *first, *second, *path, *expected;
} kCases[] = {
    // Members of their own.
    {Value<StateInfo>, uR"({"State":"a","Progress":1})", uR"({"Progress":"2","PollingTime":"p"})", u"",
     uR"({"Progress":1,"State":"a","StartTime":"","PollingTime":"p"})"},
    {Value<AudioData>, uR"({"CommandExecuted":1})", uR"({"maxAmplitude":0.5})", u"/CommandExecuted", u"1"},
    // Lists are replaced, or added to.
    {Value<SoftwareInfo>, uR"({"VersionInfo":[1,2]})", uR"({"VersionInfo":[3]})", u"/VersionInfo", u"[3]"},
    {Value<NICData>, uR"({"NICAccessPoints":[{"NICAccessPointName":"a"}]})", uR"({"NICAccessPoints":[{}]})",
     u"/NICAccessPoints/0/NICAccessPointName", u"\"\""},
    {Value<MouseData>, uR"({"ButtonClickCount":[{},{}]})", uR"({"ButtonClickCount":[]})", u"/ButtonClickCount", u"[]"},
    {Value<MotherboardData>, uR"({"FanData":[{}]})", uR"({"FanData":[{"FanSpeed":1}]})", u"/FanData/1/FanSpeed", u"1"},
    {Value<MotherboardData>, uR"({"KorvGpuIds":["a"]})", uR"({"KorvGpuIds":["b"]})", u"/KorvGpuIds", uR"(["b"])"},
    {Value<MassStorageData>, uR"({"smartAttributes":[{}]})", uR"({"smartAttributes":[{"threshold":8}]})",
     u"/smartAttributes/1/threshold", u"8"},
    {Value<DiagnosticInfo>, uR"({"DiagnosticData":[[{"a":"1"}]]})", uR"({"DiagnosticData":[[{"a":"2"}]]})",
     u"/DiagnosticData", uR"([[{"a":"1"}],[{"a":"2"}]])"},
    {Value<RegistryAccessData>, uR"({"RegistryData":[{"b":"1"}]})", uR"({"RegistryData":[{"b":"3"},{"a":"2"}]})",
     u"/RegistryData", uR"([{"a":"2"},{"b":"1"}])"},
    {Value<DevProperties>, uR"({"Properties":[{}]})", uR"({"Properties":[{"IsArray":true}]})", u"/Properties/1/IsArray",
     u"true"},
    {Value<DevProp>, uR"({"Name":"n"})", uR"({"Type":"t"})", u"/Name", u"\"\""},
    // Nested records are replaced as a whole, except those of a disk.
    {Value<DeviceInfo>, uR"({"VideoData":{"VideoMemory":1}})", uR"({"VideoData":{}})", u"/VideoData/VideoMemory", u"0"},
    {Value<DeviceInfo>, uR"({"VideoData":{"VideoMemory":1}})", uR"({"VideoData":null})", u"/VideoData/VideoMemory",
     u"1"},
    {Value<MouseMotionData>, uR"({"SourceBoundingRect":{"Left":1.5}})", uR"({"SourceBoundingRect":{"Top":2.5}})",
     u"/SourceBoundingRect", uR"({"Left":0.0,"Top":2.5,"Width":0.0,"Height":0.0})"},
    {Value<Disk>, kDisk, uR"({"DriveType":2,"SCSIadr":{"Lun":1}})", u"/SCSIadr",
     uR"({"Adapter":0,"Bus":2,"Target":0,"Lun":1})"},
    {Value<Disk>, kDisk, uR"({"DriveType":2,"nvmeIdentifyBuff":{"Slot1ReadOnly":1,"IEEE":[4]}})",
     u"/nvmeIdentifyBuff/SlotCount", u"7"},
    // Members of a disk whose key is missing keep their value, or become 0 or false.
    {Value<Disk>, kDisk, uR"({"Capacity":50,"DiskRPM":70})", u"/Capacity", u"5"},
    {Value<Disk>, kDisk, uR"({"DriveType":"x"})", u"/DriveType", u"1"},
    {Value<Disk>, kDisk, kDrive, u"/Capacity", u"5"},
    {Value<Disk>, kDisk, kDrive, u"/TotalLBAs", u"6"},
    {Value<Disk>, kDisk, kDrive, u"/ModelString", u"\"m\""},
    {Value<Disk>, kDisk, kDrive, u"/sasAddr", u"[1,2,3,4,5,6,7,8]"},
    {Value<Disk>, kDisk, kDrive, u"/DiskRPM", u"0"},
    {Value<Disk>, kDisk, kDrive, u"/BlockSize", u"0"},
    {Value<Disk>, kDisk, kDrive, u"/NVMECNTLID", u"0"},
    {Value<Disk>, kDisk, kDrive, u"/isRaidVolume", u"false"},
};

TEST(ReadingTwice, KeepsWhatTheSecondTextDoesNotReplace) {
  for (const auto& test : kCases) {
    EXPECT_EQ(test.value(test.first, test.second, test.path), test.expected)
        << testing::PrintToString(std::u16string(test.path)) << " of case " << &test - kCases;
  }
}

TEST(ReadingTwice, AContractKeepsItsCoreRecordWhenATextHasNone) {
  RMTDataContract contract;
  EXPECT_TRUE(contract.Deserialize(uR"({"CoreData":{"TaskID":"1"}})"));
  for (const char16_t* text : {u"{", u"{}", uR"({"CoreData":null})"}) EXPECT_FALSE(contract.Deserialize(text));
  EXPECT_EQ(contract.CoreData->TaskID, u"1");
}

}  // namespace
