// Texts from outside as they may stand on a terminal.

#include "shown-text.h"

#include <gtest/gtest.h>

namespace {

TEST(ShownText, IsWhatItWasWhereNothingCanHarm) {
  for (const char* const text : {"", "chr1 of \\x \"name\"", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\xA7\xAC", "100%s"}) {
    EXPECT_EQ(shown(text), text);
  }
}

TEST(ShownText, HasNoControlCharacters) {
  EXPECT_EQ(shown("\x1b[31mred\x7f"), "\\x1b[31mred\\x7f");
  EXPECT_EQ(shown("a\tb\rc\nd"), "a\\x09b\\x0dc\\x0ad");
  EXPECT_EQ(shown(std::string_view("\0", 1)), "\\x00");
  EXPECT_EQ(shown("\xC2\x9B"
                  "2J"),
            "\\xc2\\x9b2J");  // the same as ESC [
  EXPECT_EQ(shown("\xE2\x80\xAE"
                  "gnp"),
            "\\xe2\\x80\\xaegnp");  // written from right to left
}

TEST(ShownText, HasNoBytesThatAreNoUtf8) {
  EXPECT_EQ(shown("\x9b"
                  "2J"),
            "\\x9b2J");
  EXPECT_EQ(shown("\xC0\x9B"), "\\xc0\\x9b");
  EXPECT_EQ(shown("\xE0\x80\x9B"), "\\xe0\\x80\\x9b");
  EXPECT_EQ(shown("\xED\xA0\x80"), "\\xed\\xa0\\x80");
  EXPECT_EQ(shown("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");
  EXPECT_EQ(shown("\xE2\x82"), "\\xe2\\x82");
}

TEST(ShownText, KeepsTheLinesOfATextOfSeveral) { EXPECT_EQ(shown_lines("a\n\x1b\n"), "a\n\\x1b\n"); }

}  // namespace
