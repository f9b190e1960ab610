#include <gtest/gtest.h>

#include "text/narrow.h"

namespace {

TEST(WideToNarrow, FollowsTheCLocale) {
  EXPECT_EQ(text::WideToNarrow(u""), "");
  EXPECT_EQ(text::WideToNarrow(std::u16string_view(u"plain\0text", 10)), "plain");
  EXPECT_EQ(text::WideToNarrow(u"caf\u00e9"), "caf\xE9") << "Latin-1 has a form in the C locale";
  EXPECT_EQ(text::WideToNarrow(u"\u0141"), "") << "and nothing else has";
  EXPECT_EQ(text::WideToNarrow(u"a\u20ac"), "");
}

}  // namespace
