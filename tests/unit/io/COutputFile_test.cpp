// The files that a run writes.

#include "COutputFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "support/temporary-directory.h"

namespace {

class OutputFile : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
  COutputFile file{"as output file."};
};

TEST_F(OutputFile, IsCreatedAndWritten) {
  ASSERT_TRUE(file.claim(directory.path("out")));
  ASSERT_TRUE(file.start());
  std::fputs("text\n", file.stream());
  EXPECT_TRUE(file.is_intact());
  EXPECT_EQ(directory.contents("out"), "text\n");
  EXPECT_TRUE(file.close());
  EXPECT_EQ(directory.contents("out"), "text\n");
}

TEST_F(OutputFile, KeepsItsOldContentsUntilItIsStarted) {
  directory.write("out", "something longer than the new text\n");
  ASSERT_TRUE(file.claim(directory.path("out")));
  EXPECT_EQ(directory.contents("out"), "something longer than the new text\n");
  ASSERT_TRUE(file.start());
  std::fputs("new\n", file.stream());
  EXPECT_TRUE(file.close());
  EXPECT_EQ(directory.contents("out"), "new\n");
}

TEST_F(OutputFile, ThatIsGivenUpIsRemovedIfItIsNew) {
  ASSERT_TRUE(file.claim(directory.path("out")));
  file.abandon();
  EXPECT_FALSE(directory.has("out"));
}

TEST_F(OutputFile, ThatIsGivenUpStaysIfItIsOld) {
  directory.write("out", "old\n");
  ASSERT_TRUE(file.claim(directory.path("out")));
  file.abandon();
  EXPECT_EQ(directory.contents("out"), "old\n");
}

TEST_F(OutputFile, CannotBeADirectoryOrLieInAMissingOne) {
  EXPECT_FALSE(file.claim(directory.path("")));
  COutputFile other("as output file.");
  EXPECT_FALSE(other.claim(directory.path("missing/out")));
}

TEST_F(OutputFile, IsTheSameFileUnderEveryName) {
  const std::string original = directory.write("in", "x");
  std::filesystem::create_hard_link(original, directory.path("hard"));
  std::filesystem::create_symlink(original, directory.path("soft"));
  directory.write("other", "x");
  for (const char* const name : {"in", "hard", "soft"}) {
    COutputFile claimed("as output file.");
    ASSERT_TRUE(claimed.claim(directory.path(name)));
    EXPECT_TRUE(claimed.is_same_file_as(original)) << name;
    EXPECT_FALSE(claimed.is_same_file_as(directory.path("other"))) << name;
    EXPECT_FALSE(claimed.is_same_file_as(directory.path("missing"))) << name;
    EXPECT_TRUE(is_same_regular_file(directory.path(name), original)) << name;
  }
  EXPECT_FALSE(is_same_regular_file(original, directory.path("other")));
  EXPECT_FALSE(is_same_regular_file(original, directory.path("missing")));
}

TEST_F(OutputFile, IsNeverTheSameAsADevice) {
  ASSERT_TRUE(file.claim("/dev/null"));
  EXPECT_FALSE(file.is_same_file_as("/dev/null"));
  EXPECT_FALSE(is_same_regular_file("/dev/null", "/dev/null"));
}

TEST_F(OutputFile, ThatIsADeviceCanBeWritten) {
  ASSERT_TRUE(file.claim("/dev/null"));
  ASSERT_TRUE(file.start());
  std::fputs("text\n", file.stream());
  EXPECT_TRUE(file.close());
}

TEST_F(OutputFile, ThatIsFullIsNotIntactAndDoesNotClose) {
  ASSERT_TRUE(file.claim("/dev/full"));
  ASSERT_TRUE(file.start());
  std::fputs("text\n", file.stream());
  EXPECT_FALSE(file.is_intact());
  EXPECT_FALSE(file.close());
}

TEST_F(OutputFile, ThatIsFullIsNoticedAtItsCloseAtTheLatest) {
  ASSERT_TRUE(file.claim("/dev/full"));
  ASSERT_TRUE(file.start());
  std::fputs("text\n", file.stream());
  EXPECT_FALSE(file.close());
}

TEST_F(OutputFile, ThatWasFullOnceStaysBroken) {
  ASSERT_TRUE(file.claim("/dev/full"));
  ASSERT_TRUE(file.start());
  std::fputs("text\n", file.stream());
  std::fflush(file.stream());
  EXPECT_FALSE(file.is_intact());
}

TEST_F(OutputFile, MayBeStandardOutputWhichStaysOpen) {
  file.claim_standard_output();
  ASSERT_TRUE(file.start());
  EXPECT_EQ(file.stream(), stdout);
  ::testing::internal::CaptureStdout();
  std::fputs("text\n", file.stream());
  EXPECT_TRUE(file.close());
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "text\n");
  EXPECT_FALSE(std::ferror(stdout));
}

TEST_F(OutputFile, TellsThatItCannotBeOpenedWithItsRole) {
  ::testing::internal::CaptureStderr();
  file.report_open_failure("dir/out.txt");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Sorry! Failed to open file\n   \"dir/out.txt\"\nas output file.\n");
}

TEST_F(OutputFile, InterpretsConversionsInItsName) {
  ::testing::internal::CaptureStderr();
  file.report_open_failure("a%sb%%c%");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Sorry! Failed to open file\n   \"ab%c%\"\nas output file.\n");
}

TEST_F(OutputFile, TellsTheReasonAsItStands) {
  ::testing::internal::CaptureStderr();
  file.report_open_failure("out", "It is 100%s");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Sorry! Failed to open file\n   \"out\"\nas output file.\nIt is 100%s\n");
}

TEST_F(OutputFile, TellsThatItCannotBeWritten) {
  ASSERT_TRUE(file.claim(directory.path("out")));
  ::testing::internal::CaptureStderr();
  file.report_write_failure();
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Sorry! Failed to write file\n   \"" + directory.path("out") + "\"\nas output file.\n");
}

}  // namespace
