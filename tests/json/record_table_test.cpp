#include "json/record_table.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "json/access.h"
#include "json/member_kinds.h"
#include "tests/support/process.h"
#include "tests/support/temp_directory.h"

namespace {

struct Child {
  std::int32_t Number = 7;

  void Deserialize(const json::Value* value);
  json::Serialized Serialize(json::Document* document) const;
  static const json::RecordTable& Table();
};
constexpr json::Field kChildFields[] = {json::row<&Child::Number>(u"Number", {.id = 5})};
constexpr json::RecordTable kChild =
    json::Table({.name = "Child", .fields = kChildFields, .logsSerializeEntry = false});
void Child::Deserialize(const json::Value* value) { json::ReadRecord(kChild, this, value); }
json::Serialized Child::Serialize(json::Document* document) const { return json::WriteRecord(kChild, this, document); }

const json::RecordTable& Child::Table() { return kChild; }

// One member of every kind.
struct Record {
  std::u16string Text;
  std::uint8_t Byte = 1;
  std::int16_t Short = 2;
  float Real = 0.0F;
  bool Flag = false;
  std::uint32_t ReadOnly = 0;
  std::vector<std::u16string> Texts = {u"old"};
  std::vector<std::int32_t> Numbers;
  std::vector<Child> Cleared = std::vector<Child>(1);
  std::vector<std::unique_ptr<Child>> Kept;
  std::unique_ptr<Child> Nested;
};
constexpr json::ListLines kLines = {"Serialize Array", "Kept.size():", "Serialized Array"};
constexpr json::Field kFields[] = {
    json::row<&Record::Text>(u"Text", {.id = 1}),
    json::row<&Record::Byte>(u"Byte", {.id = 2}),
    json::row<&Record::Short>(u"Short", {.id = 2, .showsValue = false}),
    json::row<&Record::Real>(u"Real"),
    json::row<&Record::Flag>(u"Flag", {.id = 3}),
    json::row<&Record::ReadOnly>(u"ReadOnly", {.id = 4, .written = false}),
    json::row<&Record::Texts>(u"Texts", {.id = 5}),
    json::row<&Record::Numbers>(u"Numbers", {.id = 6, .line = "Numbers Count:"}),
    json::row<&Record::Cleared>(u"Cleared"),
    json::row<&Record::Kept>(u"Kept", {.appends = true, .list = &kLines}),
    json::row<&Record::Nested>(u"Nested", {.id = 8}),
};
constexpr auto kOrder = json::WriteOrder<kFields>(
    {u"Nested", u"Text", u"Byte", u"Short", u"Real", u"Flag", u"Texts", u"Numbers", u"Cleared", u"Kept"});
constexpr json::RecordTable kTable = json::Table({.name = "Record",
                                                  .fields = kFields,
                                                  .writeOrder = kOrder,
                                                  .readName = "INCOMPLETE Record",
                                                  .serializeEntryId = 1,
                                                  .newDocumentId = 9,
                                                  .completeId = 10});

class RecordTableTest : public testing::Test {
 protected:
  // The log directory of a process is settled by its first line.
  static void SetUpTestSuite() {
    SetEnvironment("ZQRMT_LOG_DIRECTORY", Log().Path().string());
    std::ofstream(Log() / "debug3.flg");
  }
  static const TempDirectory& Log() {
    static const TempDirectory directory;
    return directory;
  }
  bool Read(const std::u16string& text) {
    json::Document document;
    EXPECT_TRUE(json::ParseText(text, document));
    return json::ReadRecord(kTable, &record, &document);
  }
  std::u16string Write() {
    json::Document document;
    return json::ValueToText(json::WriteRecord(kTable, &record, &document).value);
  }
  // Returns the log's lines as "id, level: text", and empties the log.
  std::string TakeLog() {
    std::ifstream file(Log() / "ZQRMLOG.LOG");
    std::string lines;
    for (std::string line; std::getline(file, line);) {
      line = line.substr(26, line.rfind(", [") - 26);
      lines += std::to_string(std::atoi(line.c_str()) - 527000000) + line.substr(line.find(',')) + "\n";
    }
    file.close();
    std::filesystem::remove(Log() / "ZQRMLOG.LOG");
    return lines;
  }
  Record record;
};

TEST_F(RecordTableTest, EveryKindIsReadLoggedAndWritten) {
  Read(
      u"{\"Nested\":{\"Number\":-1},\"Kept\":[{},3],\"Cleared\":[{\"Number\":1}],\"Numbers\":[1,\"x\",2.5,3],"
      u"\"Texts\":[\"a\",1,\"b\"],\"ReadOnly\":4294967295,\"Flag\":true,\"Real\":0.1,\"Short\":-70000,\"Byte\":300,"
      u"\"Text\":\"t\",\"Text\":\"second\",\"Unknown\":{}}");
  EXPECT_EQ(TakeLog(),
            "1, debug3: Entering INCOMPLETE Record::Deserialize()\n1, debug2: Set Text:t\n2, debug2: Set Byte:44\n"
            "2, debug2: Set Short:\n3, debug2: Set Flag:true\n4, debug2: Set ReadOnly:4294967295\n"
            "5, debug2: Set Texts count:2\n6, debug2: Numbers Count:2\n"
            "1, debug3: Entering Child::Deserialize()\n5, debug2: Set Number:1\n"
            "1, debug3: Entering Child::Deserialize()\n1, debug3: Entering Child::Deserialize()\n"
            "1, debug3: Entering Child::Deserialize()\n5, debug2: Set Number:-1\n");
  EXPECT_EQ(Write(),
            u"{\"Nested\":{\"Number\":-1},\"Text\":\"t\",\"Byte\":44,\"Short\":-4464,\"Real\":0.10000000149011612,"
            u"\"Flag\":true,\"Texts\":[\"a\",\"b\"],\"Numbers\":[1,3],\"Cleared\":[{\"Number\":1}],"
            u"\"Kept\":[{\"Number\":7},{\"Number\":7}]}");
  EXPECT_EQ(TakeLog(),
            "1, debug3: Entering Record::Serialize()\n0, debug2: Serialize Array\n22, debug2: Kept.size():2\n"
            "33, debug2: Current Index:0\n33, debug2: Current Index:1\n0, debug2: Serialized Array\n"
            "10, debug2: Serialize Complete:Record\n");
}

TEST_F(RecordTableTest, WhatIsMissingOrOfAnotherKindStays) {
  record.Nested = std::make_unique<Child>();
  Read(
      u"{\"Text\":1,\"Byte\":-1,\"Short\":4.0,\"Real\":1e39,\"Flag\":\"true\",\"Texts\":{},\"Cleared\":3,\"Kept\":null,"
      u"\"Nested\":null}");
  EXPECT_EQ(TakeLog(), "1, debug3: Entering INCOMPLETE Record::Deserialize()\n8, debug2: No Nested to set.\n");
  EXPECT_EQ(Write(),
            u"{\"Nested\":{\"Number\":7},\"Text\":\"\",\"Byte\":1,\"Short\":2,\"Real\":0.0,\"Flag\":false,"
            u"\"Texts\":[\"old\"],\"Numbers\":[],\"Cleared\":[{\"Number\":7}],\"Kept\":[]}");
  Read(u"{\"Nested\":\"text\",\"Texts\":[],\"Kept\":[{}]}");
  Read(u"{\"Kept\":[{}]}");
  EXPECT_EQ(record.Kept.size(), 2U);
  EXPECT_TRUE(record.Texts.empty());
  TakeLog();
  EXPECT_FALSE(Read(u"[]"));
  EXPECT_EQ(TakeLog(), "") << "nothing is read where a record is expected";
}

TEST_F(RecordTableTest, WithoutADocumentTheResultOwnsItsMemory) {
  const json::Serialized result = json::WriteRecord(kTable, &record, nullptr);
  EXPECT_NE(TakeLog().find("9, debug2: inComingDoc was NULL, Creating new object.\n"), std::string::npos);
  EXPECT_NE(result.document, nullptr);
  EXPECT_EQ(json::ValueToText(result.value),
            u"{\"Text\":\"\",\"Byte\":1,\"Short\":2,\"Real\":0.0,\"Flag\":false,\"Texts\":[\"old\"],\"Numbers\":[],"
            u"\"Cleared\":[{\"Number\":7}],\"Kept\":[]}");
}

}  // namespace
