#include <gtest/gtest.h>

#include "json-text.h"
#include "sequence-names.h"

namespace {

TEST(PlainName, EndsAtTheFirstWhiteSpace) {
  EXPECT_EQ(plain_name("chr1"), "chr1");
  EXPECT_EQ(plain_name("chr1\there"), "chr1");
  EXPECT_EQ(plain_name("chr1\vx"), "chr1");
  EXPECT_EQ(plain_name("chr1\fx"), "chr1");
  EXPECT_EQ(plain_name("\tx"), "");
  EXPECT_EQ(plain_name("\x01|\xff"), "\x01|\xff");
}

TEST(Gff3Name, KeepsWhatMayStandInTheFirstColumn) {
  EXPECT_EQ(gff3_name("chr1.2:3^4*5$6@7!8+9_0?A-Z|a-z"), "chr1.2:3^4*5$6@7!8+9_0?A-Z|a-z");
}

TEST(Gff3Name, EscapesAllElse) {
  EXPECT_EQ(gff3_name(">a;b=c&d,e%f#g"), "%3Ea%3Bb%3Dc%26d%2Ce%25f%23g");
  EXPECT_EQ(gff3_name("\x01\x7f\x80\xff\"/(~"), "%01%7F%80%FF%22%2F%28%7E");
}

// A decoder of percent signs gives every byte back.
TEST(Gff3Name, LosesNothing) {
  std::string all;
  for (int byte = 1; byte != 256; ++byte) all.push_back(static_cast<char>(byte));
  const std::string escaped = gff3_name(all);
  std::string decoded;
  for (std::size_t i = 0; i != escaped.size(); ++i) {
    if (escaped[i] != '%') {
      decoded.push_back(escaped[i]);
      continue;
    }
    decoded.push_back(static_cast<char>(std::stoi(escaped.substr(i + 1, 2), nullptr, 16)));
    i += 2;
  }
  EXPECT_EQ(decoded, all);
}

TEST(BedName, IsNothingThatOtherProgramsPassOver) {
  for (const char* name : {"", "#x", "track", "track1", "browser", "browserx"}) EXPECT_FALSE(is_bed_name(name)) << name;
  for (const char* name : {"x#", "Track", "trac", "brows", "1"}) EXPECT_TRUE(is_bed_name(name)) << name;
}

TEST(NameRegister, NoticesTheSecondOfTwoNames) {
  CNameRegister names;
  EXPECT_TRUE(names.add("a"));
  EXPECT_TRUE(names.add("b"));
  EXPECT_TRUE(names.add(""));
  EXPECT_FALSE(names.add("a"));
  EXPECT_FALSE(names.add(""));
}

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
