// The files around a conversion: the table of lengths, the text that waits on the disk, the file that is written.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "CConvertedFile.h"
#include "CSequenceLengths.h"
#include "CTemporaryText.h"
#include "support/gzip-text.h"
#include "support/stream-text.h"
#include "support/temporary-directory.h"
#include "text-output.h"

namespace {

class FileTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
};

using SequenceLengths = FileTest;

TEST_F(SequenceLengths, ComeFromAnIndexAndFromAPlainTable) {
  CSequenceLengths lengths;
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
    EXPECT_NE(lengths.trouble().find("At line "), std::string::npos) << lengths.trouble();
  }
  CSequenceLengths missing;
  EXPECT_FALSE(missing.read(directory.path("nosuch")));
  EXPECT_TRUE(missing.is_unreadable());
}

using TemporaryText = FileTest;

TEST_F(TemporaryText, ComesBackWhateverItsLength) {
  for (const std::size_t lines : {0U, 1U, 1000U, 300000U}) {
    CTemporaryText waiting;
    std::string whole;
    for (std::size_t i = 0; i != lines; ++i) {
      const std::string line = std::to_string(i) + '\n';
      waiting.append(line);
      whole += line;
    }
    EXPECT_EQ(text_of([&](std::FILE* out) { EXPECT_TRUE(waiting.copy_to(out)); }), whole);
  }
}

TEST_F(TemporaryText, SaysWhenThereIsNoPlaceForIt) {
  const char* const former = std::getenv("TMPDIR");
  const std::string kept = former != nullptr ? former : "";
  setenv("TMPDIR", directory.path("").c_str(), 1);
  std::filesystem::permissions(directory.path(""), std::filesystem::perms::owner_read);
  if (access(directory.path("").c_str(), W_OK) == 0) setenv("TMPDIR", "/proc/self", 1);  // root may write anywhere
  CTemporaryText waiting;
  waiting.append(std::string(3000000, 'x'));
  waiting.append("y");
  text_of([&](std::FILE* out) { EXPECT_FALSE(waiting.copy_to(out)); });
  EXPECT_NE(waiting.trouble().find("TMPDIR"), std::string::npos) << waiting.trouble();
  std::filesystem::permissions(directory.path(""), std::filesystem::perms::owner_all);
  former != nullptr ? setenv("TMPDIR", kept.c_str(), 1) : unsetenv("TMPDIR");
}

using ConvertedFile = FileTest;

TEST_F(ConvertedFile, GetsItsNameWhenItIsComplete) {
  const std::string name = directory.path("out");
  {
    CConvertedFile file;
    ASSERT_TRUE(file.open(name, "", ""));
    write(file.stream(), "text");
    EXPECT_FALSE(directory.has("out"));
    EXPECT_TRUE(directory.has("out.unfinished"));
    EXPECT_TRUE(file.finish());
  }
  EXPECT_EQ(directory.contents("out"), "text");
  EXPECT_FALSE(directory.has("out.unfinished"));
}

TEST_F(ConvertedFile, LeavesNothingBehindWhenItIsNotComplete) {
  const std::string name = directory.write("out", "former");
  {
    CConvertedFile file;
    ASSERT_TRUE(file.open(name, "", ""));
    write(file.stream(), "text");
    EXPECT_STREQ(file.fate(), "No file has been written.\n");
  }
  EXPECT_EQ(directory.contents("out"), "former");
  EXPECT_FALSE(directory.has("out.unfinished"));
}

TEST_F(ConvertedFile, IsWrittenThroughLinksOfAnyNumber) {
  std::filesystem::create_directory(directory.path("there"));
  std::filesystem::create_symlink("there/b", directory.path("a"));
  std::filesystem::create_symlink(directory.path("there/c"), directory.path("there/b"));
  CConvertedFile file;
  ASSERT_TRUE(file.open(directory.path("a"), "", ""));
  write(file.stream(), "text");
  EXPECT_TRUE(file.finish());
  EXPECT_EQ(directory.contents("there/c"), "text");
  EXPECT_TRUE(std::filesystem::is_symlink(directory.path("a")));
}

TEST_F(ConvertedFile, IsNeverAFileToRead) {
  const std::string results = directory.write("results", "kept");
  const std::string lengths = directory.write("out.unfinished", "kept too");
  std::filesystem::create_hard_link(results, directory.path("link"));
  for (const std::string& name : {results, directory.path("link"), lengths, directory.path("out")}) {
    CConvertedFile file;
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(file.open(name, results, lengths));
    EXPECT_NE(::testing::internal::GetCapturedStderr().find("It is one of the files to read."), std::string::npos);
  }
  EXPECT_EQ(directory.contents("results"), "kept");
  EXPECT_EQ(directory.contents("out.unfinished"), "kept too");
}

TEST_F(ConvertedFile, MayBeANamedPipe) {
  const std::string name = directory.path("pipe");
  ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
  std::FILE* const reader = fopen(name.c_str(), "r+");
  CConvertedFile file;
  ASSERT_TRUE(file.open(name, "", ""));
  write(file.stream(), "text\n");
  EXPECT_STREQ(file.fate(), "What has been written is not complete.\n");
  EXPECT_TRUE(file.finish());
  char line[16] = "";
  EXPECT_STREQ(std::fgets(line, sizeof line, reader), "text\n");
  std::fclose(reader);
  EXPECT_FALSE(directory.has("pipe.unfinished"));
}

}  // namespace
