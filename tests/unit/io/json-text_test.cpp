// Texts as JSON writes them.

#include "json-text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace {

std::string of_text(std::string_view text) { return inert_json(std::string(text)); }

TEST(JsonText, EscapesWhatCouldEndTheScript) {
  EXPECT_EQ(of_text("</script><!--&"), R"("\u003c/script\u003e\u003c!--\u0026")");
}

TEST(JsonText, EscapesQuotesBackslashesAndControls) {
  EXPECT_EQ(of_text(std::string_view("\"\\\n\0\x1b", 5)), R"("\"\\\n\u0000\u001b")");
}

TEST(JsonText, KeepsUtf8AndReplacesWhatIsNone) {
  EXPECT_EQ(of_text("\xc3\xa9\xf0\x9f\xa7\xac"), "\"\xc3\xa9\xf0\x9f\xa7\xac\"");
  EXPECT_EQ(of_text("a\xffz"), "\"a\xef\xbf\xbdz\"");
  EXPECT_EQ(of_text("\xe2\x82<"), "\"\xef\xbf\xbd\\u003c\"");
}

TEST(JsonText, AnyTwoBytesAreInertUtf8) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string json = of_text(std::string{static_cast<char>(first), static_cast<char>(second)});
      EXPECT_EQ(json.find_first_of("<>&\n"), std::string::npos);
      EXPECT_TRUE(is_utf8(json));
      EXPECT_TRUE(std::none_of(json.begin(), json.end(), [](char symbol) { return symbol >= 0 && symbol < ' '; }));
    }
  }
}

TEST(JsonText, KnowsTheSizeOfItsValues) {
  for (const std::int64_t number : {0L, 9L, 10L, -1L, -10L, 1234567890123L}) {
    EXPECT_EQ(json_size(number), inert_json(number).size() + 1);
  }
  EXPECT_EQ(json_size("a<"), 1U + 1 + 6 + 1 + 1);
}

TEST(JsonText, ReplacesWhatIsNoUtf8) {
  const std::string replacement = "\xef\xbf\xbd";
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
