// Texts as JSON writes them.

#include "json-text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(JsonText, QuotesWhatJsonQuotes) {
  EXPECT_EQ(json_text("a\"b\\c\t\x01\x7f"), "\"a\\\"b\\\\c\\t\\u0001\x7f\"");
  EXPECT_EQ(json_text("caf\xc3\xa9"), "\"caf\xc3\xa9\"");
}

TEST(JsonText, ReplacesWhatIsNoUtf8) {
  const std::string replacement = "\xef\xbf\xbd";
  EXPECT_EQ(json_text("a\xff"
                      "b"),
            "\"a" + replacement + "b\"");
  EXPECT_EQ(as_utf8("\xed\xa0\x80").substr(0, 3), replacement) << "a surrogate";
  EXPECT_EQ(as_utf8("x\xc3"), "x" + replacement) << "cut off";
  EXPECT_EQ(as_utf8("\xc0\xaf").substr(0, 3), replacement) << "longer than needed";
}

TEST(JsonText, KnowsUtf8) {
  for (const char* text : {"", "abc", "caf\xc3\xa9", "\xf0\x9f\xa7\xac", "\x01"}) EXPECT_TRUE(is_utf8(text)) << text;
  for (const char* text : {"\xff", "caf\xe9", "\xc3", "\xed\xa0\x80", "\xf5\x80\x80\x80"}) EXPECT_FALSE(is_utf8(text));
}

TEST(JsonText, WritesBytesInHexadecimal) {
  EXPECT_EQ(hexadecimal(std::string("\0\x0f\xff"
                                    "a",
                                    4)),
            "000fff61");
}

}  // namespace
