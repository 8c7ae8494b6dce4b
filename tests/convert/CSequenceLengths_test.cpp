// The table of lengths.

#include "CSequenceLengths.h"

#include <gtest/gtest.h>

#include "support/gzip-text.h"
#include "support/temporary-directory.h"

namespace {

class SequenceLengths : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
};

TEST_F(SequenceLengths, ComeFromAnIndexAndFromAPlainTable) {
  CSequenceLengths lengths;
  EXPECT_EQ(lengths.total(), std::nullopt);
  ASSERT_TRUE(lengths.read(directory.write("fai", "chr1\t100\t6\t60\t61\nchr2\t0\t9\t60\t61\nx y\t7\n")));
  EXPECT_EQ(lengths.of("chr1"), 100);
  EXPECT_EQ(lengths.of("chr2"), 0);
  EXPECT_EQ(lengths.of("chr1\tmore"), 100);
  EXPECT_EQ(lengths.of("chr"), std::nullopt);
  EXPECT_EQ(lengths.total(), 107);
  CSequenceLengths packed;
  ASSERT_TRUE(packed.read(directory.write("gz", gzip_member("a\t3\r\nb\t4\r\n"))));
  EXPECT_EQ(packed.total(), 7);
}

TEST_F(SequenceLengths, RefuseWhatIsNoTable) {
  for (const char* text : {"chr1\n", "chr1 100\n", "chr1\tlong\n", "chr1\t-1\n", "chr1\t9x\n", "chr1\t99999999999\n",
                           ">chr1\nACGT\n", "\n", "chr1\t1\nchr1\t1\n"}) {
    CSequenceLengths lengths;
    EXPECT_FALSE(lengths.read(directory.write("table", text))) << text;
    EXPECT_FALSE(lengths.is_unreadable());
    EXPECT_NE(lengths.error().find("At line "), std::string::npos) << lengths.error();
  }
  CSequenceLengths missing;
  EXPECT_FALSE(missing.read(directory.path("nosuch")));
  EXPECT_TRUE(missing.is_unreadable());
}

}  // namespace
