#include "sequence-names.h"

#include <gtest/gtest.h>

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

}  // namespace
