#include <gtest/gtest.h>

#include <clocale>

#include "text/narrow.h"

namespace {

TEST(WideToNarrow, FollowsTheLocale) {
  EXPECT_EQ(text::WideToNarrow(std::u16string_view(u"plain\0text", 10)), "plain");
  EXPECT_EQ(text::WideToNarrow(u"caf\u00e9"), "") << "no form in the C locale";
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(text::WideToNarrow(u"caf\u00e9"), "caf") << "cut to as many bytes as there are units";
  EXPECT_EQ(text::WideToNarrow(u"\u00e9\u00e9\u00e9"), "\u00e9");
  EXPECT_EQ(text::WideToNarrow(u"12\U0001F600"), "12") << "whole characters only";
  EXPECT_EQ(text::WideToNarrow(u"smile \xD83D"), "") << "half a character has no form in any locale";
}

}  // namespace
