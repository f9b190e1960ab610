// Records that remember earlier calls or write only a part of what was read.

#include <gtest/gtest.h>
#include <rapidjson/pointer.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

// The value at `path` of a reply, "(none)" if there is none.
std::string At(const std::string& reply, const char* path) {
  rapidjson::Document document;
  document.Parse(reply.c_str());
  const rapidjson::Value* value = rapidjson::Pointer(path).Get(document);
  if (value == nullptr) return "(none)";
  rapidjson::StringBuffer buffer;
  rapidjson::Writer writer(buffer);
  value->Accept(writer);
  return buffer.GetString();
}

std::string Entry(int number) {
  return R"({"Name":")" + std::to_string(number) + R"(","DeviceID":"","DeviceInstanceID":"","DUID":"","Type":""})";
}

class RecordOddities : public testing::Test {
 protected:
  RecordOddities() { module.StartMachine(QuietMachine()); }
  ModuleUnderTest module;
};

TEST_F(RecordOddities, TheEventIsTheLastThatAnyCallBrought) {
  const std::string unset = R"({"EventID":0,"Payload":"","Source":"","Severity":0})";
  const std::string event = R"({"EventID":7,"Payload":"p","Source":"s","Severity":-1})";
  const std::string later = R"({"EventID":0,"Payload":"","Source":"t","Severity":0})";
  const struct {
    const char* function;
    std::string members, event;
  } calls[] = {{"AudioRecordTest", R"("EventLoggerData":{})", unset},
               {"AudioRecordTest", R"("EventLoggerData":{"evModel":)" + event + "}", event},
               {"AudioPlaybackTest", R"("EventLoggerData":{})", event},
               {"AudioRecordTest", R"("StateInfo":{})", "(none)"},
               {"AudioRecordTest", R"("EventLoggerData":null)", "(none)"},
               {"AudioRecordTest", R"("EventLoggerData":{"evModel":null})", event},
               {"AudioRecordTest", R"("EventLoggerData":{"evModel":[{"EventID":8}]})", event},
               {"AudioRecordTest", R"("EventLoggerData":{"evModel":{"EventID":8}}})", "(none)"},  // bad JSON
               {"AudioPlaybackTest", R"("EventLoggerData":{"evModel":{"EventID":"9","Source":"t"}})", later},
               {"AudioRecordTest", R"("EventLoggerData":{})", later},
               {"AudioRecordTest", R"("EventLoggerData":{"evModel":{}})", unset}};
  for (const auto& call : calls) {
    const std::string reply = module.Call(call.function, R"({"CoreData":{)" + call.members + "}}");
    EXPECT_EQ(At(reply, "/CoreData/EventLoggerData/evModel"), call.event) << call.members;
  }
}

TEST_F(RecordOddities, ADeviceListGoesOutAPageAtATime) {
  std::string entries;
  for (int i = 0; i < 45; ++i) entries += Entry(i) + (i < 44 ? "," : "");
  const struct {
    int index, first, count;
  } pages[] = {{0, 0, 20},         {1, 20, 20},       {2, 40, 5},
               {3, 0, 0},          {107374183, 0, 0},  // its first entry would be a negative number in 32 bits
               {214748365, 0, 0},                      // ... and this one's the fourth
               {2147483647, 0, 0}, {-1, 0, -1},       {-2147483647 - 1, 0, -1}};
  for (const auto& page : pages) {
    const std::string reply = module.Record(R"({"CoreData":{"DeviceInfo":{"DevList":{"TotalCount":7,"CurrentIndex":)" +
                                            std::to_string(page.index) + R"(,"Segment":[)" + entries + "]}}}}");
    std::string expected;
    for (int i = 0; i < page.count; ++i) expected += Entry(page.first + i) + (i + 1 < page.count ? "," : "");
    expected = R"({"TotalCount":7,"CurrentIndex":)" + std::to_string(page.index) + R"(,"Segment":[)" + expected + "]}";
    EXPECT_EQ(At(reply, "/CoreData/DeviceInfo/DevList"), page.count < 0 ? "{}" : expected);
  }
}

}  // namespace
