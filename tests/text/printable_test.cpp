#include <gtest/gtest.h>

#include "text/utf.h"

namespace {

TEST(ToUtf8, ReplacesHalfACharacter) {
  EXPECT_EQ(text::ToUtf8(u"\xD83D\xDE00"
                         u"a\xD83D"
                         u"b\xDE00\xD83D"),
            "\U0001F600"
            "a\uFFFD"
            "b\uFFFD\uFFFD");
}

TEST(Printable, ShowsWhatCouldSteerATerminalOrTurnTheWriting) {
  const std::pair<const char*, const char*> kCases[] = {
      {"H\u00F6rmuschel \U0001F3A7 ~", "H\u00F6rmuschel \U0001F3A7 ~"},
      {"a\x1B[2J\n\x1F\x7F", "a<U+001B>[2J<U+000A><U+001F><U+007F>"},
      {"\u0080\u009B31m\u009D\u009F\u00A0", "<U+0080><U+009B>31m<U+009D><U+009F>\u00A0"},
      {"\u061C\u200D\u200E\u200F\u2010", "<U+061C>\u200D<U+200E><U+200F>\u2010"},
      {"\u2027\u2028\u2029\u202A\u202E\u202F", "\u2027<U+2028><U+2029><U+202A><U+202E>\u202F"},
      {"\u2065\u2066\u2069\u206A", "\u2065<U+2066><U+2069>\u206A"},
      // No UTF-8: a byte alone, the C1 character U+009B as Latin-1 has it, the beginning of a character.
      {"\xFF\x9B\xE2\x80", "\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& [text, shown] : kCases) EXPECT_EQ(text::Printable(text), shown);
  EXPECT_EQ(text::Printable(std::string_view("a\0b", 3)), "a<U+0000>b");
}

}  // namespace
