#include <gtest/gtest.h>

#include "json/text.h"

namespace {

TEST(WideToNarrow, FollowsTheCLocale) {
  EXPECT_EQ(json::WideToNarrow(u""), "");
  EXPECT_EQ(json::WideToNarrow(std::u16string_view(u"plain\0text", 10)), "plain");
  EXPECT_EQ(json::WideToNarrow(u"caf\u00e9"), "caf\xE9") << "Latin-1 has a form in the C locale";
  EXPECT_EQ(json::WideToNarrow(u"\u0141"), "") << "and nothing else has";
  EXPECT_EQ(json::WideToNarrow(u"a\u20ac"), "");
}

}  // namespace
