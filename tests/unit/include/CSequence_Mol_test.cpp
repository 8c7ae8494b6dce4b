#include "CSequence_Mol.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/temporary-directory.h"

namespace {

constexpr int good = CFile::good_state;
constexpr int failed = CFile::fail_state;
constexpr int exhausted = CFile::end_of_file | CFile::fail_state;

std::string text(const faststring& s) { return {s.buffer, s.length}; }

class CSequenceMolTest : public ::testing::Test {
 protected:
  CTemporaryDirectory directory;
  std::unique_ptr<CFile> file = std::make_unique<CFile>();
  CSequence_Mol record{1, 'N'};

  void open(const std::string& contents, unsigned block_size = CFile::buffer_size) {
    file = std::make_unique<CFile>();
    file->block_size = block_size;
    file->open(directory.write("input", contents).c_str());
  }

  // Reads the next record and returns the status.
  int read() {
    record.readFastaSequence(*file);
    return file->status;
  }

  std::string symbols() const { return text(record.symbols); }
};

TEST_F(CSequenceMolTest, TheHeaderIsSplitAtItsFirstBlank) {
  open(">seq1 Homo sapiens chr1\nA\n");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "seq1 Homo sapiens chr1");
  EXPECT_EQ(text(record.short_name), "seq1");
  EXPECT_EQ(text(record.description), "Homo sapiens chr1");
}

TEST_F(CSequenceMolTest, AHeaderMayBeAsLongAsTheLimitAndNotLonger) {
  for (const unsigned block_size : {2U, 7U, CFile::buffer_size}) {
    record.max_header_length = 9;
    open("#x\n>123456789\nAC\n>1\n", block_size);
    EXPECT_EQ(read(), good);
    EXPECT_FALSE(record.has_too_long_header());
    EXPECT_EQ(text(record.full_name), "123456789");
    for (const char* const longer : {">a\nC\n>1234567890\nAC\n", ">a\nC\n>1234567890", ">a\nC\n>123456789\1\nAC\n"}) {
      open(longer, block_size);
      EXPECT_EQ(read(), good);
      EXPECT_EQ(read(), failed);
      EXPECT_TRUE(record.has_too_long_header());
      EXPECT_EQ(file->line, 3U);
    }
    open(">1\nAC\n", block_size);
    EXPECT_EQ(read(), exhausted);
    EXPECT_FALSE(record.has_too_long_header());
  }
}

TEST_F(CSequenceMolTest, ARunOfBlanksSplitsTheHeaderOnce) {
  open(">seq1   two\nA\n");
  read();
  EXPECT_EQ(text(record.full_name), "seq1   two");
  EXPECT_EQ(text(record.short_name), "seq1");
  EXPECT_EQ(text(record.description), "two");
}

TEST_F(CSequenceMolTest, ATabDoesNotSplitTheHeader) {
  open(">seq1\ttwo\nA\n");
  read();
  EXPECT_EQ(text(record.short_name), "seq1\ttwo");
}

TEST_F(CSequenceMolTest, AHeaderThatBeginsWithABlankHasAnEmptyShortName) {
  open("> seq1 two\nA\n");
  read();
  EXPECT_EQ(text(record.full_name), " seq1 two");
  EXPECT_EQ(text(record.short_name), "");
  EXPECT_EQ(text(record.description), "seq1 two");
}

TEST_F(CSequenceMolTest, AHeaderThatEndsInBlanksHasAnEmptyDescription) {
  open(">a b\nA\n>seq1  \nA\n");
  read();
  read();
  EXPECT_EQ(text(record.short_name), "seq1");
  EXPECT_EQ(text(record.description), "");
}

TEST_F(CSequenceMolTest, AHeaderWithoutBlankLeavesTheDescriptionOfTheRecordBefore) {
  open(">a first\nA\n>b\nC\n");
  read();
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.short_name), "b");
  EXPECT_EQ(text(record.description), "first");
}

TEST_F(CSequenceMolTest, LowerCaseRnaGapsAndAmbiguityCodesAreNormalised) {
  open(">s\nacgtn\nACG-T*\nuuRy\n");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), "ACGTNACGTTTNN");
}

TEST_F(CSequenceMolTest, EveryAmbiguityCodeInEitherCaseBecomesTheReplacementSymbol) {
  open(">s\nNXRYKMSWBDHV?nxrykmswbdhv\n");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), std::string(25, 'N'));
}

TEST_F(CSequenceMolTest, TheReplacementSymbolIsTheRecordsOwn) {
  record.replacement_symbol = 'Z';
  open(">s\nArC?\n");
  read();
  EXPECT_EQ(symbols(), "AZCZ");
}

TEST_F(CSequenceMolTest, WhiteSpaceInsideALineIsSkipped) {
  open(">s\nA C\tG\vT\fA \n");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), "ACGTA");
}

TEST_F(CSequenceMolTest, ADigitEndsTheReadingOnItsLineAndLeavesTheSymbolsBeforeIt) {
  open(">s\nACGT\nACG1T\nACGT\n");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 3U);
  EXPECT_EQ(symbols(), "ACGTACG");
}

TEST_F(CSequenceMolTest, EveryByteThatIsNoSymbolIsAFormatError) {
  const std::string accepted = "ACGTUNXRYKMSWBDHV?acgtunxrykmswbdhv \t\v\f-*\n\r";
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    open(std::string(">s\nA") + c + "C\n");
    EXPECT_EQ(read(), accepted.find(c) == std::string::npos ? failed : exhausted) << "byte " << byte;
  }
}

TEST_F(CSequenceMolTest, AnAngleBracketInsideALineIsAFormatError) {
  open(">s\nAC>GT\n");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 2U);
}

TEST_F(CSequenceMolTest, ABadByteAtTheVeryEndOfTheFileIsTakenForTheEnd) {
  open(">s\nACG1");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), "ACG");
}

TEST_F(CSequenceMolTest, BlankLinesInsideAndBetweenRecordsAreAccepted) {
  open(">a\nAC\n\nGT\n\n\n>b\n\nTT\n\n");
  EXPECT_EQ(read(), good);
  EXPECT_EQ(symbols(), "ACGT");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), "TT");
}

TEST_F(CSequenceMolTest, ARecordWithoutAFinalLineEndIsComplete) {
  open(">a\nACGT");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(symbols(), "ACGT");
}

TEST_F(CSequenceMolTest, AHeaderWithoutALineEndIsARecordWithoutSymbols) {
  open(">a first");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "a first");
  EXPECT_EQ(text(record.short_name), "a");
  EXPECT_EQ(symbols(), "");
}

TEST_F(CSequenceMolTest, ALoneAngleBracketAtTheEndKeepsTheNamesOfTheRecordBefore) {
  open(">a first\nAC\n>");
  EXPECT_EQ(read(), good);
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "");
  EXPECT_EQ(text(record.short_name), "a");
  EXPECT_EQ(text(record.description), "first");
  EXPECT_EQ(symbols(), "");
}

class LineEnds : public CSequenceMolTest, public ::testing::WithParamInterface<const char*> {
 protected:
  static std::string with_line_ends(const std::string& contents) {
    std::string result;
    for (const char c : contents) result += c == '\n' ? std::string(GetParam()) : std::string(1, c);
    return result;
  }
};

TEST_P(LineEnds, GiveTheSameRecords) {
  open(with_line_ends("# note\n>a x\nAC\nGT\n\n>b y\nTT\n"));
  EXPECT_EQ(read(), good);
  EXPECT_EQ(text(record.full_name), "a x");
  EXPECT_EQ(symbols(), "ACGT");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "b y");
  EXPECT_EQ(symbols(), "TT");
}

TEST_P(LineEnds, GiveTheSameLineOfAFormatError) {
  open(with_line_ends("# note\n>a x\nAC\n\nG#T\nA\n"));
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 5U);
}

INSTANTIATE_TEST_SUITE_P(CSequenceMol, LineEnds, ::testing::Values("\n", "\r\n", "\r"), [](const auto& line_end) {
  return std::string(line_end.index == 0 ? "LineFeed" : line_end.index == 1 ? "Both" : "CarriageReturn");
});

TEST_F(CSequenceMolTest, CommentLinesAndWhiteSpaceBeforeTheFirstHeaderAreSkipped) {
  open("# one\n\n  \t# two\n \v\f>a\nAC\n");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "a");
  EXPECT_EQ(symbols(), "AC");
}

TEST_F(CSequenceMolTest, ACommentLineBehindTheFirstHeaderIsAFormatError) {
  open(">a\nAC\n# note\n>b\nAC\n");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 3U);
}

TEST_F(CSequenceMolTest, AFileThatBeginsWithAnotherByteIsAFormatErrorOnItsLine) {
  open("\n\nACGT\n>a\nAC\n");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 3U);
}

TEST_F(CSequenceMolTest, AnEmptyFileIsAFormatErrorOnLineOne) {
  open("");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 1U);
}

TEST_F(CSequenceMolTest, AFileOfBlankLinesIsAFormatErrorBehindThem) {
  open("\n \n\n");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 4U);
}

TEST_F(CSequenceMolTest, AFileOfCommentLinesIsAFormatErrorBehindThem) {
  open("# one\n# two");
  EXPECT_EQ(read(), failed);
  EXPECT_EQ(file->line, 2U);
}

TEST_F(CSequenceMolTest, OfTwoHeadersInARowTheFirstRecordHasNoSymbols) {
  open(">a\n>b\nAC\n");
  EXPECT_EQ(read(), good);
  EXPECT_EQ(text(record.full_name), "a");
  EXPECT_EQ(symbols(), "");
  EXPECT_EQ(read(), exhausted);
  EXPECT_EQ(text(record.full_name), "b");
  EXPECT_EQ(symbols(), "AC");
}

TEST_F(CSequenceMolTest, AFurtherRecordReplacesTheSymbolsOfALongerOne) {
  open(">a\nACGTACGT\n>b\nTT\n");
  read();
  read();
  EXPECT_EQ(symbols(), "TT");
}

TEST_F(CSequenceMolTest, ReadingIntoAPreSizedStringDoesNotMoveIt) {
  record.symbols.reserve(2000);
  const char* const buffer = record.symbols.buffer;
  open(">a\n" + std::string(1990, 'A') + "\n");
  read();
  EXPECT_EQ(record.symbols.length, 1990U);
  EXPECT_EQ(record.symbols.buffer, buffer);
  EXPECT_EQ(record.symbols.capacity, 2001U);
}

class BlockSizes : public CSequenceMolTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  // Names, symbols, status and line of every record.
  std::string all_records(const std::string& contents, unsigned block_size) {
    open(contents, block_size);
    std::string result;
    int status = good;
    while (status == good) {
      status = read();
      result += text(record.full_name) + "|" + text(record.short_name) + "|" + symbols() + "|" +
                std::to_string(status) + "|" + std::to_string(file->line) + "\n";
    }
    return result;
  }
};

TEST_P(BlockSizes, DoNotChangeWhatIsRead) {
  const std::string contents =
      "#c\r\n \n#d\r>one two\r\nACgtnRYu\r\n\r\nAC-T *\rGG\n>two\n>three  x \r\rACGT\r\n>four\nAC\nA";
  const std::string expected =
      "one two|one|ACGTNNNTACTGG|2|9\ntwo|two||2|10\nthree  x |three|ACGT|2|13\nfour|four|ACA|5|15\n";
  EXPECT_EQ(all_records(contents, GetParam()), expected);
}

TEST_P(BlockSizes, DoNotChangeWhereAFormatErrorIs) {
  EXPECT_EQ(all_records(">a\nAC\r\nA1C\n>b\nAC\n", GetParam()), "a|a|ACA|4|3\n");
}

INSTANTIATE_TEST_SUITE_P(CSequenceMol, BlockSizes, ::testing::Values(2, 3, 4, 5, 6, 7, 8, 11, 16, 33, 1000000),
                         [](const auto& size) { return std::to_string(size.param); });

}  // namespace
