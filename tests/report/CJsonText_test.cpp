// JSON that is inert inside a script element, whatever bytes it is made of.

#include "CJsonText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "json-text.h"

namespace {

std::string of_text(std::string_view text) { return CJsonText().value(text).text(); }

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
