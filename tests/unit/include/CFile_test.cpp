#include "CFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "support/random-dna.h"
#include "support/temporary-directory.h"

namespace {

constexpr int good = CFile::good_state;
constexpr int failed = CFile::fail_state;
constexpr int exhausted = CFile::end_of_file | CFile::fail_state;

// Of blocks that the stream does not read ahead.
constexpr unsigned two_blocks = 40000;

class CFileTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
  std::unique_ptr<CFile> file = std::make_unique<CFile>();

  void open(const std::string& contents, unsigned block_size = CFile::buffer_size) {
    file = std::make_unique<CFile>();
    file->block_size = block_size;
    file->open(directory.write("input", contents).c_str());
  }

  // Everything up to the end of the file.
  std::string rest() {
    std::string bytes;
    for (;;) {
      const int c = file->getchar();
      if (file->has_failed()) return bytes;
      bytes += static_cast<char>(c);
    }
  }
};

TEST_F(CFileTest, OpeningGivesTheGoodStatusAndLineOne) {
  open("A");
  EXPECT_EQ(file->status, good);
  EXPECT_EQ(file->line, 1U);
}

TEST_F(CFileTest, AMissingFileHasTheFailBitAlone) {
  file->open(directory.path("missing").c_str());
  EXPECT_EQ(file->status, failed);
}

TEST_F(CFileTest, ADirectoryReadsAsAnEmptyFile) {
  file->open(directory.path("").c_str());
  EXPECT_EQ(file->getchar(), 0);
  EXPECT_EQ(file->status, exhausted);
}

TEST_F(CFileTest, ADirectoryIsNoTrouble) {
  file->open(directory.path("").c_str());
  for (int i = 0; i < 3; ++i) file->getchar();
  EXPECT_EQ(file->status, exhausted);
  EXPECT_EQ(file->fault, nullptr);
}

TEST_F(CFileTest, AFileThatBecameShorterIsNotAtItsEnd) {
  open(std::string(two_blocks, 'A'), two_blocks / 2);
  EXPECT_EQ(file->getchar(), 'A');
  std::filesystem::resize_file(directory.path("input"), two_blocks - 1);
  EXPECT_EQ(rest(), std::string(two_blocks - 2, 'A'));
  EXPECT_EQ(file->status, failed);
  EXPECT_STREQ(file->fault, "It has become shorter while it was read");
}

TEST_F(CFileTest, AFileThatBecameLongerIsReadToItsNewEnd) {
  open("ABCDEF", 4);
  std::ofstream(directory.path("input"), std::ios::app) << "GHI";
  EXPECT_EQ(rest(), "ABCDEFGHI");
  EXPECT_EQ(file->status, exhausted);
  EXPECT_EQ(file->fault, nullptr);
}

TEST_F(CFileTest, ANewFileHasNoTroubleOfTheOneBefore) {
  open(std::string(two_blocks, 'A'), two_blocks / 2);
  EXPECT_EQ(file->getchar(), 'A');
  std::filesystem::resize_file(directory.path("input"), 0);
  rest();
  EXPECT_NE(file->fault, nullptr);
  file->close();
  file->clear();
  file->open(directory.write("other", "xyz").c_str());
  EXPECT_EQ(rest(), "xyz");
  EXPECT_EQ(file->status, exhausted);
  EXPECT_EQ(file->fault, nullptr);
}

TEST_F(CFileTest, AFileOfExactlyOneBlockEndsAtAnEmptySecondBlock) {
  open(std::string(1000000, 'A'));
  int others = 0;
  for (int i = 0; i < 1000000; ++i) others += file->getchar() != 'A' ? 1 : 0;
  EXPECT_EQ(others, 0);
  EXPECT_EQ(file->status, good);
  EXPECT_EQ(file->getchar(), 0);
  EXPECT_EQ(file->status, exhausted);
}

TEST_F(CFileTest, AnEmptyFileEndsAtTheFirstFetch) {
  open("");
  EXPECT_EQ(file->getchar(), 0);
  EXPECT_EQ(file->status, exhausted);
}

TEST_F(CFileTest, ALineEndOfTwoBytesAcrossABlockBorderIsOneLineEnd) {
  open(std::string(999999, 'A') + "\r\nB");
  for (int i = 0; i < 999999; ++i) ASSERT_EQ(file->getchar(), 'A');
  EXPECT_EQ(file->getchar(), '\n');
  EXPECT_EQ(file->line, 2U);
  EXPECT_EQ(file->getchar(), 'B');
  EXPECT_EQ(file->line, 2U);
}

TEST_F(CFileTest, ALoneCarriageReturnIsALineEnd) {
  open("A\rB");
  EXPECT_EQ(rest(), "A\nB");
  EXPECT_EQ(file->line, 2U);
}

TEST_F(CFileTest, CarriageReturnAndLineFeedAreOneLineEnd) {
  open("A\r\nB");
  EXPECT_EQ(rest(), "A\nB");
  EXPECT_EQ(file->line, 2U);
}

TEST_F(CFileTest, LineFeedAndCarriageReturnAreTwoLineEnds) {
  open("A\n\rB");
  EXPECT_EQ(rest(), "A\n\nB");
  EXPECT_EQ(file->line, 3U);
}

TEST_F(CFileTest, ACarriageReturnAtTheEndOfTheFileIsALineEnd) {
  open("A\r");
  EXPECT_EQ(file->getchar(), 'A');
  EXPECT_EQ(file->getchar(), '\n');
  EXPECT_EQ(file->line, 2U);
  EXPECT_EQ(file->getchar(), 0);
  EXPECT_EQ(file->status, exhausted);
}

TEST_F(CFileTest, OtherControlBytesAndHighBytesComeOutUnchanged) {
  const std::string bytes("\t\v\f\x01\x00\x7f\x80\xff", 8);
  open(bytes);
  for (const char c : bytes) EXPECT_EQ(file->getchar(), static_cast<unsigned char>(c));
  EXPECT_EQ(file->status, good);
  EXPECT_EQ(file->line, 1U);
}

TEST_F(CFileTest, TheRawFetchNeitherFoldsNorCountsLineEnds) {
  open("\r\n\xe4");
  EXPECT_EQ(file->getchar_intern(), '\r');
  EXPECT_EQ(file->getchar_intern(), '\n');
  EXPECT_EQ(file->getchar_intern(), 0xe4);
  EXPECT_EQ(file->line, 1U);
}

TEST_F(CFileTest, UngetcharBringsTheByteBack) {
  open("AB");
  file->getchar();
  file->ungetchar();
  EXPECT_EQ(rest(), "AB");
}

TEST_F(CFileTest, UngetcharOfALineEndRestoresTheLine) {
  open("A\r\nB");
  file->getchar();
  file->getchar();
  ASSERT_EQ(file->line, 2U);
  file->ungetchar();
  EXPECT_EQ(file->line, 1U);
  EXPECT_EQ(file->getchar(), '\n');
  EXPECT_EQ(file->line, 2U);
  EXPECT_EQ(file->getchar(), 'B');
}

TEST_F(CFileTest, UngetcharSucceedsDirectlyBehindARefill) {
  open(std::string(1000000, 'A') + "B");
  for (int i = 0; i < 1000000; ++i) file->getchar();
  EXPECT_EQ(file->getchar(), 'B');
  file->ungetchar();
  EXPECT_EQ(file->status, good);
  EXPECT_EQ(file->getchar(), 'B');
}

TEST_F(CFileTest, UngetcharAtTheEndBringsTheLastByteBackAndKeepsTheStatus) {
  open("AB");
  ASSERT_EQ(rest(), "AB");
  file->ungetchar();
  EXPECT_EQ(file->status, exhausted);
  EXPECT_EQ(*file->buffer_pos, 'B');
}

TEST_F(CFileTest, UngetcharFailsBeforeTheFirstByte) {
  open("A");
  file->ungetchar();
  EXPECT_EQ(file->status, failed);
}

TEST_F(CFileTest, UngetcharFailsInAnEmptyFileAndLeavesItsEndOfFileBit) {
  open("");
  file->getchar();
  file->ungetchar();
  EXPECT_EQ(file->status, exhausted);
}

TEST_F(CFileTest, ALineEndMadeByTheLastCarriageReturnIsNotUncountedByPushBack) {
  open("A\r");
  file->getchar();
  ASSERT_EQ(file->getchar(), '\n');
  file->ungetchar();
  EXPECT_EQ(file->line, 2U);
  EXPECT_EQ(file->status, exhausted);
}

// What getchar must deliver for the bytes of a file.
std::string folded(const std::string& bytes) {
  std::string result;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool second_of_pair = bytes[i] == '\n' && i > 0 && bytes[i - 1] == '\r';
    if (!second_of_pair) result += bytes[i] == '\r' ? '\n' : bytes[i];
  }
  return result;
}

TEST_F(CFileTest, LineEndsAndPushBackDoNotDependOnBlockBorders) {
  CRandomDna random(1);
  for (int round = 0; round < 300; ++round) {
    const std::string bytes = random.sequence("AB\r\n", random.number(0, 20));
    const auto block_size = static_cast<unsigned>(random.number(2, 9));
    SCOPED_TRACE("round " + std::to_string(round) + " block size " + std::to_string(block_size));
    open(bytes, block_size);
    unsigned line = 1;
    for (const char expected : folded(bytes)) {
      ASSERT_EQ(file->getchar(), expected);
      const bool met_the_end = file->has_failed();  // looking for the second byte of a line end
      if (!met_the_end && random.coin()) {
        file->ungetchar();
        EXPECT_EQ(file->line, line);
        ASSERT_EQ(file->getchar(), expected);
      }
      if (expected == '\n') ++line;
      EXPECT_EQ(file->line, line);
    }
    EXPECT_EQ(file->getchar(), 0);
    EXPECT_EQ(file->status, exhausted);
  }
}

}  // namespace
