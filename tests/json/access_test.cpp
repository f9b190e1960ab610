#include "json/access.h"

#include <gtest/gtest.h>
#include <rapidjson/error/en.h>

#include <cmath>
#include <map>

#include "json/getters.h"
#include "json/types.h"
#include "text/narrow.h"
#include "text/utf.h"

namespace {

class AccessTest : public testing::Test {
 protected:
  const json::Value& Parse(const std::u16string& text) {
    document.SetObject();
    json::ParseText(text, document);
    return document;
  }
  json::Document document;
};

TEST_F(AccessTest, ObjectMemberIsFoundUnlessItIsNull) {
  const json::Value& parent = Parse(u"{\"zero\":0,\"empty\":\"\",\"null\":null,\"zero\":1}");
  json::ObjectMember member;
  EXPECT_EQ(json::GetObjectMember(&parent, u"zero", &member), 1);
  EXPECT_EQ(member.value, &parent[u"zero"]) << "the first of two";
  EXPECT_EQ(json::GetObjectMember(&parent, u"null", &member), 0);
  EXPECT_EQ(json::GetObjectMember(&parent, u"Zero", &member), 0);
  EXPECT_EQ(member.value, &parent[u"zero"]) << "a failed lookup leaves the result";
  EXPECT_EQ(json::GetObjectMember(&parent, u"empty", &member), 1);
}

TEST_F(AccessTest, AnArrayParentGivesAnErrorObject) {
  json::ObjectMember member;
  EXPECT_EQ(json::GetObjectMember(&Parse(u"[1]"), u"a", &member), 0);
  EXPECT_EQ(json::ValueToText(*member.value),
            u"{\"PARSE_ERROR\":\"No Root key name. Iterate through array by index.\"}");
}

TEST_F(AccessTest, ErrorTextsEndWithTheCodesOfTheParser) {
  // All but these four are as the parser has them.
  std::map<int, std::u16string> texts = {
      {rapidjson::kParseErrorNone, u"No error"},
      {rapidjson::kParseErrorDocumentRootNotSingular, u"The document root must not follow by other values."},
      {rapidjson::kParseErrorTermination, u"Parsing was terminated."},
      {999, u"No Root key name. Iterate through array by index."}};
  for (int code = 0; code <= rapidjson::kParseErrorUnspecificSyntaxError; ++code) {
    const std::string text = rapidjson::GetParseError_En(static_cast<rapidjson::ParseErrorCode>(code));
    texts.emplace(code, std::u16string(text.begin(), text.end()));
  }
  for (const auto& [code, text] : texts) EXPECT_EQ(json::ParseErrorText(code), text) << code;
  for (const int code : {18, 998, 1000, -1}) EXPECT_EQ(json::ParseErrorText(code), u"UNKNOWN") << code;
}

TEST_F(AccessTest, TextThatIsNotJsonLeavesTheRoot) {
  for (const char16_t* text : {u"", u" ", u"{} {}", u"[1,]", u"{\"a\":1e999}", u"{\"a\":-1e309}", u"// c\n{}", u"NaN",
                               u"[\"\\uDC00\"]", u"[\"\\u0041\\uDC00\"]", u"[\"\\uDFFF\"]"}) {
    document.SetArray();
    EXPECT_FALSE(json::ParseText(text, document));
    EXPECT_TRUE(document.IsArray());
  }
  EXPECT_TRUE(json::ParseText(u"\t{\"a\":1e308, \"b\":\"\\uD800\\uDC00\\uDBFF\\uDFFF\\uE000\\uD7FF\"}\r\n ", document));
}

TEST_F(AccessTest, ExponentsBeyondAllBoundsGiveZero) {
  for (const char16_t* number : {u"0.0000000001e-2147483639", u"1.5E-00099999999999999999999", u"-1.0e-2147483648",
                                 u"0.0000000001e-21474836300000000"}) {
    Parse(std::u16string(u"{\"a\":") + number + u",\"text\":\"1e-2147483639\\\"\"}");
    ASSERT_TRUE(document.HasMember(u"a"));
    EXPECT_EQ(document[u"a"].GetDouble(), 0.0);
    EXPECT_EQ(document[u"text"].GetString(), std::u16string(u"1e-2147483639\"")) << "texts stay as they are";
  }
  EXPECT_EQ(Parse(u"{\"a\":25e-0000000000001}")[u"a"].GetDouble(), 2.5);
}

TEST_F(AccessTest, AnInfiniteNumberEndsTheText) {
  Parse(u"{\"a\":1,\"b\":2,\"c\":3}");
  document[u"b"].SetDouble(HUGE_VAL);
  EXPECT_EQ(json::ValueToText(document), u"{\"a\":1,\"b\":");
}

TEST_F(AccessTest, GettersFailInTheirThreeWays) {
  const json::Value& object = Parse(
      u"{\"big\":70000,\"wide\":4294967808,\"text\":\"a\\u0000b\",\"flag\":true,\"real\":4.0,\"minus\":-1,\"zero\":"
      u"\"\"}");
  const auto expect = [&](auto getter, const char16_t* key, auto value, bool found, const decltype(value)& after) {
    EXPECT_EQ(getter(object, key, &value), found) << text::ToUtf8(key);
    EXPECT_EQ(value, after) << text::ToUtf8(key);
  };
  expect(json::GetInt16Member, u"big", std::int16_t{9}, true, 4464);
  expect(json::GetInt16Member, u"text", std::int16_t{9}, false, 0);
  expect(json::GetUint16Member, u"minus", std::uint16_t{9}, false, 0);
  expect(json::GetUint64AsUint32Member, u"wide", 9U, true, 512U);
  expect(json::GetUint64AsUint32Member, u"missing", 9U, false, 0U);
  expect(json::GetInt32Member, u"real", 9, false, 9);
  expect(json::GetInt32Member, u"wide", 9, false, 9);
  expect(json::GetInt64Member, u"wide", std::int64_t{9}, true, 4294967808);
  expect(json::GetHandleMember, u"wide", std::uint64_t{9}, false, 9U);
  expect(json::GetHandleMember, u"flag", std::uint64_t{9}, true, 0U);
  expect(json::GetStringMember, u"flag", std::u16string(u"old"), false, u"old");
  expect(json::GetStringMember, u"text", std::u16string(u"old"), true, u"a");
  expect(json::GetStringMember, u"zero", std::u16string(u"old"), true, u"");
  expect(json::GetBoolMember, u"big", true, false, true);
}

TEST(TextTest, UnitsAreWidenedAndLoweredOneByOne) {
  EXPECT_EQ(text::NarrowToWide("\xE9z"), u"\xFFE9z");
  EXPECT_EQ(text::LowerWide(u"A{Z}\u00C4\u0141"), u"a{z}\u00C4\u0141");
}

TEST(TextTest, NumbersAreShownAsAStreamShowsThem) {
  EXPECT_EQ(text::DoubleToText(1234567.0), "1.23457e+06");
  EXPECT_EQ(text::DoubleToText(0.5), "0.5");
  EXPECT_EQ(text::IntToText(-5), "-5");
  EXPECT_EQ(text::UintToText(4294967295), "4294967295");
  EXPECT_EQ(text::Uint64ToText(18446744073709551615U), "18446744073709551615");
}

}  // namespace
