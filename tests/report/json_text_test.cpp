// JSON that is inert inside a script element, whatever bytes it is made of.

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "CJsonText.h"

namespace {

std::string of_text(std::string_view text) { return CJsonText().value(text).text(); }

TEST(JsonText, EscapesWhatCouldEndTheScript) {
  EXPECT_EQ(of_text("</script><!--&"), R"("\u003c/script\u003e\u003c!--\u0026")");
}

TEST(JsonText, EscapesQuotesBackslashesAndControls) {
  EXPECT_EQ(of_text(std::string_view("\"\\\n\0\x7f", 5)), R"("\u0022\u005c\u000a\u0000\u007f")");
}

TEST(JsonText, KeepsCharactersOfUtf8) {
  EXPECT_EQ(of_text("\xc3\xa9\xe2\x82\xac\xf0\x9f\xa7\xac"), R"("\u00e9\u20ac\ud83e\uddec")");
  EXPECT_EQ(of_text("\xef\xbf\xbf\xf4\x8f\xbf\xbf"), R"("\uffff\udbff\udfff")");
}

TEST(JsonText, ReplacesEachByteThatIsNoUtf8) {
  EXPECT_EQ(of_text("\xff"), R"("\ufffd")");
  EXPECT_EQ(of_text("\x80z"), R"("\ufffdz")");
  EXPECT_EQ(of_text("\xc0\xaf"), R"("\ufffd\ufffd")") << "an overlong form";
  EXPECT_EQ(of_text("\xe0\x80\xaf"), R"("\ufffd\ufffd\ufffd")") << "an overlong form";
  EXPECT_EQ(of_text("\xed\xa0\x80"), R"("\ufffd\ufffd\ufffd")") << "a surrogate";
  EXPECT_EQ(of_text("\xf4\x90\x80\x80"), R"("\ufffd\ufffd\ufffd\ufffd")") << "beyond the last character";
  EXPECT_EQ(of_text("\xe2\x82"), R"("\ufffd\ufffd")") << "cut off";
  EXPECT_EQ(of_text("\xe2\x82<"), R"("\ufffd\ufffd\u003c")") << "cut off by another character";
}

TEST(JsonText, AnyTwoBytesAreInert) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string json = of_text(std::string{static_cast<char>(first), static_cast<char>(second)});
      EXPECT_EQ(json.find_first_of("<>&\n"), std::string::npos);
      EXPECT_EQ(json.find('"', 1), json.size() - 1);
      EXPECT_TRUE(std::all_of(json.begin(), json.end(), [](char symbol) { return symbol >= ' ' && symbol <= '~'; }));
    }
  }
}

TEST(JsonText, SetsCommasBetweenValuesOnly) {
  CJsonText json;
  json.begin_object().key("a").value(1).key("b").begin_array().end_array();
  json.array("c", std::vector<int>{1, -2}, [](int number) { return number; });
  json.array("d", std::vector<int>{1, 0}, [](int number) { return number > 0 ? std::optional(number) : std::nullopt; });
  json.array("e", std::vector<int>{3}, [](int) { return std::string_view("x"); });
  json.key("f").begin_object().end_object().key("g").null().end_object();
  EXPECT_EQ(json.text(), R"({"a":1,"b":[],"c":[1,-2],"d":[1,null],"e":["x"],"f":{},"g":null})");
}

TEST(JsonText, KnowsTheSizeOfItsValues) {
  for (const std::int64_t number : {0L, 9L, 10L, -1L, -10L, 1234567890123L}) {
    EXPECT_EQ(json_size(number), CJsonText().value(number).text().size() + 1);
  }
  EXPECT_EQ(json_size("a<"), 1U + 1 + 6 + 1 + 1);
}

}  // namespace
