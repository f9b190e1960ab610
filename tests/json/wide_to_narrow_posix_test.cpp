#include <gtest/gtest.h>

#include <clocale>

#include "json/text.h"

namespace {

TEST(WideToNarrow, FollowsTheLocale) {
  EXPECT_EQ(json::WideToNarrow(u"plain"), "plain");
  EXPECT_EQ(json::WideToNarrow(u"caf\u00e9"), "") << "no form in the C locale";
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  EXPECT_EQ(json::WideToNarrow(u"caf\u00e9"), "caf") << "cut to as many bytes as there are units";
  EXPECT_EQ(json::WideToNarrow(u"\u00e9\u00e9\u00e9"), "\u00e9");
}

}  // namespace
