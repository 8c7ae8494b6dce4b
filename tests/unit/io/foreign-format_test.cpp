// Files that are known by their first bytes.

#include "foreign-format.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::literals;

// As the programs write them that the advice names.
TEST(ForeignFormat, IsKnownByItsFirstBytes) {
  const std::string tar = "chr1.fa" + std::string(250, '\0') + "ustar  ";
  const std::pair<std::string, const char*> files[] = {
      {"\xFD"
       "7zXZ\0\0\4"s,
       "compressed by xz"},
      {"BZh91AY&SY\x1C"s, "compressed by bzip2"},
      {"BZh9\x17\x72\x45\x38\x50\x90"s, "compressed by bzip2"},
      {"\x28\xB5\x2F\xFD\x24"s, "compressed by zstd"},
      {"\x50\x2A\x4D\x18\x04"s, "compressed by zstd"},
      {"\x04\x22\x4D\x18\x64"s, "compressed by lz4"},
      {"LZIP\1"s, "compressed by lzip"},
      {"\x1F\x9D\x90"s, "compressed by compress"},
      {"PK\3\4\x14"s, "zip archive"},
      {"7z\xBC\xAF\x27\x1C"s, "7-Zip"},
      {tar, "tar archive"},
      {"\x43\x27\x41\x1A"s, "2bit"},
      {"\x1A\x41\x27\x43"s, "2bit"},
      {"BAM\1"s, "BAM"},
      {"CRAM\3"s, "CRAM"},
      {"\xFF\xFE>\0"s, "UTF-16"},
      {"\xFE\xFF\0>"s, "UTF-16"},
      {"\xFF\xFE\0\0"s, "UTF-32"},
      {"\xEF\xBB\xBF>"s, "byte order mark"},
  };
  for (const auto& [bytes, kind] : files) {
    const char* const advice = foreign_format(bytes);
    ASSERT_NE(advice, nullptr) << kind;
    EXPECT_NE(std::string(advice).find(kind), std::string::npos) << advice;
    EXPECT_NE(std::string(advice).find(" Please "), std::string::npos) << advice;
  }
}

TEST(ForeignFormat, IsNoneOfTextAndOfBytesThatDoNotTell) {
  for (const std::string& bytes :
       {""s, ">seq"s, "#BAM\1"s, " PK"s, "@read1"s, "LOCUS"s, "BZh91AY"s, "CRAM is a format"s, "LZIP is a program"s,
        "PK"s, "\xFF"s, "\xEF\xBB"s, "BAM"s, ">chr1.fa" + std::string(249, '\0') + "ustar"}) {
    EXPECT_EQ(foreign_format(bytes), nullptr) << bytes;
  }
}

}  // namespace
