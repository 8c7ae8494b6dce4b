// Whole runs: the order of what a run writes, the records it searches and the masked file.

#include "support/run.h"

#include <gtest/gtest.h>

#include <string>

#include "support/test-record.h"

namespace {

constexpr const char* good_byes = "\nAnalysis finished successfully.\n\nQuarvo says goodbye.\n\n";
constexpr const char* finished = "## Finished successfully. ##\n";

// Records s1, s2 and so on with an AC repeat in each.
std::string records(int number) {
  std::string fasta;
  for (int i = 1; i <= number; ++i) fasta.append(">s").append(std::to_string(i)).append("\nGGACACACACACGG\n");
  return fasta;
}

class Run : public RunTest {
 protected:
  // Which of the records s1 to s10 have a block in the results.
  std::string searched() const {
    std::string numbers;
    for (int i = 1; i <= 10; ++i) {
      const std::string name = ">s" + std::to_string(i) + "\n";
      if (has(results, name)) numbers.append(std::to_string(i)).append(" ");
    }
    return numbers;
  }
};

TEST_F(Run, WithoutAResultsFileWritesToStandardOutputAndItsMessagesToStandardError) {
  directory.write("in.fas", records(1));
  run({"--outputFormat", "0", "--printRepeatSeqMode", "0", in()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(results.find("# Results computed with:\n#    Quarvo, version 3.3.10\n# Parameter settings"), 0U);
  EXPECT_TRUE(has(results, "# Column  8: Repeat unit\n# \n>s1\nsequence length: 14\n    dinucleotide         3 : "));
  EXPECT_TRUE(ends_with(results, "unit AC\n# Analysis of sequence \"s1\" completed.\n## Finished successfully. ##\n"));
  EXPECT_FALSE(has(results, "goodbye"));
  EXPECT_EQ(messages.find("\n\n      Welcome to Quarvo, version 3.3.10,\n"), 0U);
  EXPECT_TRUE(has(messages, "\nResults computed with:\n   Quarvo, version 3.3.10\nParameter settings used"));
  EXPECT_TRUE(has(messages,
                  "   Print sequence mode:                  don't print sequence\n"
                  "\n\nSearch progress:\n\nTime     - SeqNr - PatLen - Seq-Name\n" +
                      std::string(72, '-') + "\n00.00.00 - #   1 -    1bp - s1\n"));
  EXPECT_TRUE(ends_with(messages, std::string(" - s1\n") + good_byes));
  EXPECT_FALSE(has(messages,
                   "# "
                   "Column"));
}

TEST_F(Run, WithAResultsFileWritesNothingToStandardOutput) {
  directory.write("in.fas", records(1));
  run({in()});
  const std::string to_standard_output = results;
  run({in(), out()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(results, "");
  std::string expected = to_standard_output;
  const std::string behind = "#    Sequence range to process:";
  expected.insert(expected.find(behind), "# Output file name:                        " + out() + "\n");
  EXPECT_EQ(directory.contents("out.txt"), expected);
}

TEST_F(Run, SearchesTheRecordsOfTheRange) {
  directory.write("in.fas", records(10));
  run({"--firstSeq", "3", "--lastSeq", "5", in()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(searched(), "3 4 5 ");
  EXPECT_EQ(count(messages, "bp - s"), 3U);
  EXPECT_TRUE(has(messages,
                  "# "
                  "  3 -    1bp - s3\n"));
  EXPECT_EQ(count(messages, good_byes), 1U);
  EXPECT_EQ(count(results, finished), 1U);
}

TEST_F(Run, SearchesAllRecordsFromTheFirstOfAnOpenRange) {
  directory.write("in.fas", records(4));
  run({"--firstSeq", "3", in()});
  EXPECT_EQ(searched(), "3 4 ");
  run({"--lastSeq", "-1", in()});
  EXPECT_EQ(searched(), "1 2 3 4 ");
}

TEST_F(Run, WithALastRecordBeforeTheFirstSearchesNone) {
  directory.write("in.fas", records(4));
  run({"--firstSeq", "3", "--lastSeq", "2", in()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(searched(), "");
  EXPECT_TRUE(ends_with(results, std::string("# Column 12: Repeat unit\n# \n") + finished));
  EXPECT_FALSE(has(messages, "bp - "));
}

TEST_F(Run, ReadsToTheEndOfTheFileBehindTheRange) {
  directory.write("in.fas", records(3) + ">s4\nAC1\nAC\n");
  run({"--lastSeq", "1", in()});
  EXPECT_EQ(status, -25);
}

std::string read_error(int line) {
  return "\n\nAn error occurred while reading the input file. It might not be a valid fasta file.\nFile position: "
         "line " +
         std::to_string(line) + "\n";
}

TEST_F(Run, OfAnEmptyFileIsAReadErrorOnLineOne) {
  directory.write("in.fas", "");
  run({in()});
  EXPECT_EQ(status, -25);
  EXPECT_TRUE(ends_with(messages, read_error(1))) << messages;
}

TEST_F(Run, OfAFileOfBlankLinesIsAReadErrorBehindThem) {
  directory.write("in.fas", "\n\n  \n");
  run({in()});
  EXPECT_EQ(status, -25);
  EXPECT_TRUE(ends_with(messages, read_error(4))) << messages;
}

TEST_F(Run, OfAFileWithABadByteTellsItsLineAndKeepsTheRecordsBefore) {
  directory.write("in.fas", ">s1\nGGACACACACACGG\nAC.GT\n");
  run({in()});
  EXPECT_EQ(status, -25);
  EXPECT_TRUE(ends_with(messages, read_error(3))) << messages;
  EXPECT_EQ(searched(), "");

  directory.write("in.fas", records(2) + ">s3\nAC.GT\nAC\n");
  run({in()});
  EXPECT_EQ(status, -25);
  EXPECT_TRUE(ends_with(messages, read_error(6))) << messages;
  EXPECT_EQ(searched(), "1 2 ");
  EXPECT_TRUE(ends_with(results, "# Analysis of sequence \"s2\" completed.\n"));
}

TEST_F(Run, OfAMissingInputFileTellsItsName) {
  run({directory.path("missing")});
  EXPECT_EQ(status, -101);
  EXPECT_EQ(results, "");
  EXPECT_TRUE(ends_with(messages, "Sorry! The input file \n   \"" + directory.path("missing") +
                                      "\"\ncould not be opened. I guess it does not exist.\n"
                                      "\nAnalysis has been aborted due to errors. Error number: -101\n\n"));
}

TEST_F(Run, InterpretsAConversionInTheNameOfAMissingInputFile) {
  run({"no-%s-%%-such-%d-file"});
  EXPECT_EQ(status, -101);
  EXPECT_TRUE(has(messages, "\n   \"no--%-such--file\"\n"));
}

TEST_F(Run, WithThreeFileNamesFailsAtTheEmptyInputName) {
  directory.write("in.fas", records(1));
  run({in(), out(), "third"});
  EXPECT_EQ(status, -101);
  EXPECT_TRUE(has(messages, "Sorry! The input file \n   \"\"\n"));
  EXPECT_FALSE(directory.has("out.txt"));
}

TEST_F(Run, WithARejectedCommandLineAddsItsClosingText) {
  run({});
  EXPECT_EQ(status, -1);
  EXPECT_TRUE(ends_with(messages, " --help for more information.\n\n\n"));
  run({"--outputFormat", "5", "in.fas"});
  EXPECT_EQ(status, -2);
  EXPECT_TRUE(
      ends_with(messages, "of 5 is unknown.\n\n\nAnalysis has been aborted due to errors. Error number: -2\n\n"));
}

TEST_F(Run, WritesTheMaskedRecordsOfTheRange) {
  directory.write("in.fas", records(2) + ">s3 with text\nggRacacacacacgg\n");
  run({"--maskX", "--firstSeq", "2", in()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(directory.contents("in.fas.masked"), ">s2\nGGXXXXXXXXXXGG\n>s3 with text\nGGNXXXXXXXXXXGG\n");
  EXPECT_TRUE(has(results, "ACACACACAC\n"));  // reported before it is masked
}

TEST_F(Run, MasksInLinesOfEightySymbols) {
  const std::string line = repeated("ACGT", 20);
  directory.write("in.fas", ">a\n" + line + line + "\n>b\n" + line + line + "A\n>c\n");
  run({"--maskX", "--minScore", "1000", in()});
  EXPECT_EQ(status, 0);
  EXPECT_EQ(directory.contents("in.fas.masked"),
            ">a\n" + line + "\n" + line + "\n>b\n" + line + "\n" + line + "\nA\n>c\n");
}

TEST_F(Run, FindsTheSameSimpleRepeatInEveryMode) {
  directory.write("in.fas", records(1));
  for (const char* const mode : {"exact", "extendExact", "imperfect"}) {
    run({"-M", mode, "--outputFormat", "4", in()});
    EXPECT_TRUE(ends_with(results, "\n>s1 1 10 2 3 12 5.000 8 100.000 0 0 0\nACACACACAC\n")) << mode << results;
  }
}

TEST_F(Run, RemovesOverlapsInEveryModeUnlessTold) {
  directory.write("in.fas", ">s1\nACACACGACACACAC\n");
  for (const char* const mode : {"extendExact", "imperfect"}) {
    run({"-M", mode, "--outputFormat", "4", in()});
    EXPECT_EQ(count(results, "\n>s1 "), 1U) << mode;
  }
  run({"-M", "extendExact", "-D", "--outputFormat", "4", in()});
  EXPECT_EQ(count(results, "\n>s1 "), 6U);
}

TEST_F(Run, EndsGffWithItsOwnLineAndFastaWithNone) {
  directory.write("in.fas", records(1));
  run({"--outputFormat", "2", in()});
  EXPECT_TRUE(ends_with(results, "\"\n# End tandem repeats\n"));
  run({"--outputFormat", "4", in()});
  EXPECT_TRUE(ends_with(results, "\nACACACACAC\n"));
  EXPECT_TRUE(has(messages, good_byes));
}

}  // namespace
