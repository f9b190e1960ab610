// The lookup of properties by name, and the list under it.

#include <gtest/gtest.h>

#include "json/access.h"
#include "json/types.h"
#include "models/core/dev_properties.h"

namespace {

using ZQ_RMT_MODELS::PropArray;
using ZQ_RMT_MODELS::PropertySet;
using ZQ_RMT_MODELS::PropValue;

PropValue Property(const std::u16string& name, const std::vector<std::u16string>& values = {u"v"}) {
  return {.Name = name, .ValueArray = values};
}

class PropArrayTest : public testing::Test {
 protected:
  ~PropArrayTest() override { PropArray::Destroy(list); }

  void AppendAll(const std::u16string& names) {
    for (const char16_t name : names) list = list->Append(Property({name}));
  }
  // The first letters of the names, by position.
  std::u16string Names() const {
    std::u16string names;
    for (std::int32_t i = 0; const PropValue* value = PropArray::At(list, i); ++i) names += value->Name[0];
    return names;
  }

  PropArray* list = new PropArray;  // any of the nodes
};

TEST_F(PropArrayTest, BeginsWithANodeThatIsNoEntry) {
  EXPECT_EQ(list->Count(), -1);
  EXPECT_EQ(PropArray::At(list, 0), nullptr);
  EXPECT_EQ(PropArray::At(nullptr, 0), nullptr);
  EXPECT_EQ(list->Append(Property(u"empty")), list);
  EXPECT_EQ(list->Count(), -1) << "one property of that name counts as none";
  EXPECT_EQ(list->Append(Property(u"empty"))->Count(), 2);
}

TEST_F(PropArrayTest, AppendsAndRemovesAtAnyNode) {
  PropArray* const head = list;
  AppendAll(u"abc");
  EXPECT_EQ(head->Append(Property(u"d"))->Index(), 3);
  EXPECT_FALSE(list->IsLast()) << "c";
  EXPECT_EQ(list->Remove(), head);
  list = head->Append(Property(u"e"));
  EXPECT_EQ(Names(), u"abde");
  head->Remove();
  EXPECT_EQ(list->Index(), 2);
  list = list->Remove();
  EXPECT_EQ(Names(), u"bd");
  EXPECT_FALSE(list->IsLast());
  list = list->Remove();
  EXPECT_TRUE(list->IsLast());
  list = list->Append(Property(u"f"))->Remove();
  EXPECT_TRUE(list->IsLast()) << "the flag of the tail that was removed";
  list = list->Remove();
  EXPECT_EQ(list, nullptr);
}

TEST_F(PropArrayTest, ResizesAtTheEndAndKeepsOneNode) {
  AppendAll(u"abc");
  list = list->Resize(5);
  EXPECT_EQ(Names(), u"abcee") << "behind c stand two named empty";
  for (const std::int32_t unchanged : {-1, -7, 5}) EXPECT_EQ(list->Resize(unchanged)->Count(), 5);
  list = list->Resize(2);
  EXPECT_EQ(Names(), u"ab");
  list = list->Resize(0);
  EXPECT_EQ(list->Count(), -1);
  EXPECT_EQ(list->Index(), -1);
  AppendAll(u"x");
  EXPECT_EQ(Names(), u"x");
}

TEST_F(PropArrayTest, ReplacesTheHeadOrElseTheLastThatEqualsTheKey) {
  AppendAll(u"abcb");
  const PropValue a = Property(u"a"), b = Property(u"b"), x = Property(u"x"), y = Property(u"y");
  EXPECT_EQ(list->Replace(&b, &x), &x);
  EXPECT_EQ(Names(), u"abcx");
  list->Replace(&a, &x);
  list->Replace(&x, &y);
  EXPECT_EQ(list->Replace(&a, &x), &x) << "there is no a any more";
  EXPECT_EQ(list->Replace(nullptr, &x), &x);
  EXPECT_EQ(Names(), u"ybcx");
}

TEST(PropValueTest, ComparesInTheOrderOfTheResults) {
  const struct {
    PropValue left, right;
    int difference;
  } cases[] = {{{}, {}, 0},
               {Property(u"n", {u"1"}), Property(u"m", {u"2"}), -1},
               {{.Qualifier = u"q", .ValueArray = {u"1"}}, {.ValueArray = {u"2"}}, 1},
               {Property(u"n", {u"", u"2"}), Property(u"n", {}), 0},
               {{.Qualifier = u"q"}, {.Type = u"t"}, 2},
               {{.Type = u"t"}, {.IsArray = true}, 3},
               {{.IsArray = true, .ValueArray = {u"empty", u"2"}}, {}, 4},
               {{.IsArray = true, .ValueArray = {}}, {.IsArray = true, .ValueArray = {u""}}, 6},
               {{.IsArray = true, .ValueArray = {u"1", u"2"}}, {.IsArray = true, .ValueArray = {u"1", u"3"}}, 8},
               {{.IsArray = true, .ValueArray = {u"1", u"2"}}, {.IsArray = true, .ValueArray = {u"1", u"2"}}, 0}};
  for (const auto& test : cases) EXPECT_EQ(CompareValue(test.left, test.right), test.difference) << &test - cases;
}

TEST(PropertySetTest, FindsByNameWithOrWithoutBrackets) {
  json::Document document;
  ASSERT_TRUE(
      json::ParseText(uR"({"Properties":[{"Name":"B[]","ValueArray":["1"]},{"Name":"A","ValueArray":["2"]},
      {"Name":"B","ValueArray":[]},{"Name":"A[]","ValueArray":["4"]},{"Name":"C"},{"ValueArray":["5"]}]})",
                      document));
  const auto set = ZQ_RMT_MODELS::DevProperties().Deserialize(&document);
  ASSERT_TRUE(json::ParseText(uR"({"Type":"t"})", document));
  EXPECT_EQ(ZQ_RMT_MODELS::DevProp().Deserialize(&document).Type, u"t");
  EXPECT_EQ(set->Count(), 5) << "B meets the value of B[]";
  const struct {
    std::u16string name;
    std::int32_t index;
    const char16_t* value;
  } cases[] = {{u"A", 1, u"2"}, {u"A[]", 2, u"4"},   {u"B", 0, u"1"},     {u"B[]", 0, u"1"}, {u"b", -1, u""},
               {u"", -1, u""},  {u"C", 3, u"empty"}, {u"empty", 4, u"5"}, {u"[]", -1, u""}};
  for (const auto& test : cases) {
    EXPECT_EQ(set->GetIndexByName(test.name), test.index) << testing::PrintToString(test.name);
    EXPECT_EQ(set->GetValueByName(test.name), test.value) << testing::PrintToString(test.name);
  }
}

TEST(PropertySetTest, TheFirstOfANameWinsUnlessItsValueIsEmpty) {
  PropertySet set;
  EXPECT_EQ(set.Count(), -1);
  EXPECT_EQ(set.AddProperty(Property(u"empty")), 1);
  EXPECT_EQ(set.GetIndexByName(u"empty"), -1) << "alone, it counts as none";
  for (const std::int32_t added : {1, 0}) EXPECT_EQ(set.AddProperty(Property(u"empty", {u"w"})), added);
  EXPECT_EQ(set.GetValueByName(u"empty"), u"v");
  for (const char16_t* value : {u"", u"late", u"later"}) EXPECT_EQ(set.AddProperty(Property(u"n", {value})), 1);
  EXPECT_EQ(set.AddProperty(Property(u"n[]", {})), 1);
  EXPECT_EQ(set.GetIndexByName(u"n"), 2);
  EXPECT_EQ(set.Count(), 6);
}

}  // namespace
