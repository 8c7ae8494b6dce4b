// The masked record.

#include "quarvo-masked.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <list>
#include <string>

#include "support/stream-text.h"
#include "support/temporary-directory.h"
#include "support/test-record.h"

namespace {

class Masked : public ::testing::Test {
 protected:
  CTestRecord record{"ACGTACGTAC", "seq1 of two"};
  Csat first;
  Csat second;
  std::list<Csat*> repeats;

  void add(Csat& sat, int left, int right) {
    sat.reset(record.at(left), record.at(left + 1));
    sat.pos_right = record.at(right);
    repeats.push_back(&sat);
  }

  static std::string masked(CSequence_Mol& its_record, const std::list<Csat*>& its_repeats) {
    return text_of([&](std::FILE* out) { write_masked_record(out, its_record, its_repeats); });
  }

  // The lines for a record of that many symbols and no repeats.
  static std::string lines_of(int symbols) {
    CTestRecord record_of_a(std::string(static_cast<std::size_t>(symbols), 'A'), "s");
    return masked(record_of_a, {});
  }
};

TEST_F(Masked, WithoutRepeatsIsTheRecord) { EXPECT_EQ(masked(record, repeats), ">seq1 of two\nACGTACGTAC\n"); }

TEST_F(Masked, HasAnXForEverySymbolOfARepeatAndNoOther) {
  add(first, 2, 5);
  EXPECT_EQ(masked(record, repeats), ">seq1 of two\nACXXXCGTAC\n");
}

TEST_F(Masked, HasOverlappingRepeatsAndThoseAtBothEnds) {
  add(first, 0, 4);
  add(second, 3, 10);
  EXPECT_EQ(masked(record, repeats), ">seq1 of two\nXXXXXXXXXX\n");
}

TEST_F(Masked, CountsSymbolsAndNotTheAlignedLength) {
  add(first, 2, 5);
  first.insertions = 2;
  EXPECT_EQ(masked(record, repeats), ">seq1 of two\nACXXXCGTAC\n");
}

TEST_F(Masked, HasTwoFullLinesForHundredAndSixtySymbols) {
  const std::string line(80, 'A');
  EXPECT_EQ(lines_of(160), ">s\n" + line + "\n" + line + "\n");
}

TEST_F(Masked, HasALineForTheOneSymbolMore) {
  const std::string line(80, 'A');
  EXPECT_EQ(lines_of(161), ">s\n" + line + "\n" + line + "\nA\n");
}

TEST_F(Masked, HasOneLineForUpToEightySymbols) {
  EXPECT_EQ(lines_of(80), ">s\n" + std::string(80, 'A') + "\n");
  EXPECT_EQ(lines_of(1), ">s\nA\n");
}

TEST_F(Masked, IsItsNameOnlyWithoutSymbols) { EXPECT_EQ(lines_of(0), ">s\n"); }

TEST_F(Masked, OfARecordThatNeverHadSymbolsIsItsNameOnly) {
  CSequence_Mol untouched(1, 'N');
  EXPECT_EQ(masked(untouched, {}), ">\n");
}

TEST(MaskedFile, StandsBesideAFile) {
  const CTemporaryDirectory directory;
  const std::string name = directory.write("in.fa", ">s\n");
  EXPECT_TRUE(can_have_masked_file(name));
  std::filesystem::create_symlink(name, directory.path("link"));
  EXPECT_TRUE(can_have_masked_file(directory.path("link")));
  EXPECT_TRUE(can_have_masked_file("relative-and-missing"));
  EXPECT_TRUE(can_have_masked_file("/proc/self/cwd/in.fa"));
  EXPECT_TRUE(can_have_masked_file("/dev/shm/in.fa"));
}

TEST(MaskedFile, StandsBesideNoPipe) {
  const CTemporaryDirectory directory;
  ASSERT_EQ(mkfifo(directory.path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(can_have_masked_file(directory.path("pipe")));
  std::filesystem::create_symlink(directory.path("pipe"), directory.path("link"));
  EXPECT_FALSE(can_have_masked_file(directory.path("link")));
}

TEST(MaskedFile, StandsBesideNoDevice) {
  const CTemporaryDirectory directory;
  EXPECT_FALSE(can_have_masked_file("/dev/null"));
  std::filesystem::create_symlink("/dev/zero", directory.path("link"));
  EXPECT_FALSE(can_have_masked_file(directory.path("link")));
}

TEST(MaskedFile, StandsBesideNoNameOfAnOpenFile) {
  const CTemporaryDirectory directory;
  const int file = open(directory.write("in.fa", ">s\n").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(file, 0);
  for (const char* const name : {"/proc/self/fd/", "/dev/fd/", "/dev/../dev/fd/"}) {
    EXPECT_FALSE(can_have_masked_file(std::string(name) + std::to_string(file))) << name;
  }
  EXPECT_FALSE(can_have_masked_file("/dev/stdin"));
  close(file);
}

}  // namespace
