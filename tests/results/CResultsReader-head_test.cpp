// The settings at the head of a results file, and names that try to be something else.

#include <gtest/gtest.h>

#include "read-results.h"

namespace {

class ResultsHead : public ResultsTest {
 protected:
  ResultsHead() { directory.write("in.fas", ">s1 first\nGGACACACACACGG\n>s2\nACGT\n"); }
};

TEST_F(ResultsHead, TellsTheSettingsInTheirOrder) {
  const results_header header =
      read_run({"--outputFormat", "3", "-f", "5", "--NsAsMissense", "--sequenceInfoAsComment", "--reportUnit", "1"})
          .header;
  EXPECT_EQ(header.program_version, quarvo_version);
  EXPECT_EQ(header.input_file_name, in());
  EXPECT_EQ(header.output_file_name, out());
  EXPECT_EQ(header.format, 3);
  EXPECT_EQ(header.print_mode, 2);
  EXPECT_EQ(header.flanking, 5);
  EXPECT_EQ(header.report_unit_mode, 1);
  EXPECT_TRUE(header.Ns_are_missense && header.has_sequence_comments && header.is_whole_input);
  EXPECT_TRUE(header.names_every_sequence());
  ASSERT_EQ(header.settings.size(), 24U);
  EXPECT_EQ(header.settings.front(), std::pair(std::string("Input file name"), in()));
  EXPECT_EQ(header.settings[8], std::pair(std::string("Minimum score"), std::string("maximum (6, 0+1*unitlength )")));
  EXPECT_EQ(header.settings[23], std::pair(std::string("Print seq. info as comment"), std::string("yes")));
}

TEST_F(ResultsHead, TellsTheFewerSettingsOfAnExactSearchToStandardOutput) {
  run({"-M", "exact", "--outputFormat", "0", "--printRepeatSeqMode", "0", "--lastSeq", "1", in()});
  const whole_results whole = read_text(results);
  ASSERT_FALSE(whole.error) << whole.text;
  EXPECT_EQ(whole.header.settings.size(), 18U);
  EXPECT_EQ(whole.header.output_file_name, "");
  EXPECT_EQ(whole.header.format, 0);
  EXPECT_EQ(whole.header.print_mode, 0);
  EXPECT_FALSE(whole.header.is_whole_input);
  EXPECT_EQ(whole.blocks.size(), 1U);
}

TEST_F(ResultsHead, DoesNotNameEverySequenceInATableWithoutComments) {
  const whole_results whole = read_run({"--outputFormat", "3"});
  EXPECT_FALSE(whole.header.names_every_sequence());
  ASSERT_EQ(whole.blocks.size(), 1U);
  EXPECT_FALSE(whole.blocks[0].sequence.full_name || whole.blocks[0].sequence.length);
}

TEST_F(ResultsHead, KeepsFileNamesWithLineEnds) {
  const std::string name = directory.write("two\nlines\n\nmore.fas", ">s1\nGGACACACACACGG\n");
  for (const char* format : {"0", "1", "3"}) {
    run({"--outputFormat", format, name, directory.path("out\n.txt")});
    ASSERT_EQ(status, 0) << messages;
    const whole_results whole = read_results(directory.path("out\n.txt"));
    ASSERT_FALSE(whole.error) << whole.text;
    EXPECT_EQ(whole.header.input_file_name, name);
    EXPECT_EQ(whole.header.output_file_name, directory.path("out\n.txt"));
    EXPECT_EQ(whole.repeat_count(), 1U);
  }
}

// Every one of these is a name of a sequence with one repeat.
TEST_F(ResultsHead, IsNotTakenInByNames) {
  const std::string names[] = {"## Finished successfully. ##",
                               "# Analysis of sequence \"x\" completed.",
                               "Finished\" completed.",
                               "# Full sequence name:",
                               "##sequence-region x 1 14",
                               "#",
                               ">",
                               "    dinucleotide         3 :        12 |     10 bp |     10 BP |      8 pt | 100.000 %",
                               "a\t2\t100.000\t3\t12\t10\t  5.000\t8\t0\t0\t0\t0\tAC\tACACACACAC",
                               "\x01\x02\x1f\x7f\x80\xff",
                               "\xc3\x28 \xed\xa0\x80",
                               std::string(100000, 'x'),
                               "a\tb\tc"};
  std::string fasta;
  for (const std::string& name : names) fasta += '>' + name + "\nGGACACACACACGG\n";
  directory.write("in.fas", fasta);
  for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
           {"--outputFormat", "0"}, {"--outputFormat", "1"}, {"--outputFormat", "3", "--sequenceInfoAsComment"}}) {
    const whole_results whole = read_run(options);
    ASSERT_FALSE(whole.error) << whole.text;
    ASSERT_EQ(whole.blocks.size(), std::size(names));
    for (std::size_t i = 0; i != std::size(names); ++i) {
      EXPECT_EQ(whole.blocks[i].sequence.full_name, names[i]);
      EXPECT_EQ(whole.blocks[i].repeats.size(), 1U);
    }
  }
  const whole_results table = read_run({"--outputFormat", "3"});
  ASSERT_FALSE(table.error) << table.text;
  EXPECT_EQ(table.repeat_count(), std::size(names));
}

TEST_F(ResultsHead, TellsSequencesOfOneNameApart) {
  directory.write("in.fas", ">s\nGGACACACACACGG\n>s\nGGACACACACACGG\n");
  EXPECT_EQ(read_run({"--outputFormat", "1"}).blocks.size(), 2U);
  EXPECT_EQ(read_run({"--outputFormat", "3", "--sequenceInfoAsComment"}).blocks.size(), 2U);
  // Nothing in this file says that the second repeat is of another sequence.
  EXPECT_EQ(read_run({"--outputFormat", "3"}).blocks.size(), 1U);
  directory.write("in.fas", ">s\nGGGACACACACACGG\n>s\nGGACACACACACGG\n");
  EXPECT_EQ(read_run({"--outputFormat", "3"}).blocks.size(), 2U);
}

}  // namespace
