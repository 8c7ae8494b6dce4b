// The greedy search that writes its repeats as it finds them.

#include <gtest/gtest.h>

#include <string>

#include "support/search.h"
#include "support/stream-text.h"

namespace {

class SimpleSearch : public ParameterTest {
 protected:
  SimpleSearch() { global_print_sat_mode = fasta_format; }

  texts repeats;  // what is left in the work list

  // What the search writes.
  std::string search(const std::string& symbols, const std::string& header = "seq1 made by hand") {
    CSearchController::reset_minimum_arrays();
    CTestRecord record(symbols, header);
    CSearchController controller(1, record);
    const std::string written = text_of([&](std::FILE* out) { controller.simple_imperfect_search(out); });
    repeats = describe(controller.work_list.records, record);
    return written;
  }
};

TEST_F(SimpleSearch, WritesEachRepeatAsItFindsIt) {
  EXPECT_EQ(search("ACACACGACACACAC"), ">seq1 1 15 2 1 15 7.000 7 92.857 0 1 0\nACACACGACACACAC\n");
  EXPECT_EQ(repeats, texts{"[0,15) AC score 7 1I"});
}

TEST_F(SimpleSearch, TakesTheShortestUnitLengthThatPasses) {
  search("ACACACACACACACAC");
  EXPECT_EQ(repeats, texts{"[0,16) AC score 14"});
}

TEST_F(SimpleSearch, LetsNoRepeatReachBackIntoTheOneBefore) {
  // The A at position 8 belongs to both repeats, and the first one has it.
  search("ACACACACAAAAAAAAA");
  EXPECT_EQ(repeats, (texts{"[0,9) AC score 7", "[9,17) A score 7"}));
}

TEST_F(SimpleSearch, TriesNoUnitWithAnNOrOfEqualSymbols) {
  set_unit_lengths(2, 3);
  search("AAAAAAAAAAAA");
  EXPECT_EQ(repeats, texts{});
  search("NNACACACAC");
  EXPECT_EQ(repeats, texts{"[2,10) AC score 6"});
}

TEST_F(SimpleSearch, BeginsWithTheHeadingOfItsFormatAndHasNoClosingLine) {
  for (const int format : {quarvo_format, extended_quarvo_format, compact_format}) {
    global_print_sat_mode = format;
    EXPECT_EQ(search("ACGT", "s one"), ">s one\nsequence length: 4\n");
  }
  for (const int format : {gff_format, one_per_line_format}) {
    global_print_sat_mode = format;
    global_sequenceInfoAsComment = false;
    EXPECT_EQ(search("ACGT", "s one"), "");
    global_sequenceInfoAsComment = true;
    EXPECT_EQ(search("ACGT", "s one"), "# Full sequence name:\n#>s one\n##sequence-region s 1 4\n");
  }
  global_print_sat_mode = fasta_format;
  EXPECT_EQ(search("ACGT", "s one"), "");
}

TEST_F(SimpleSearch, OfAnEmptySequenceWritesTheHeadingOnly) {
  global_print_sat_mode = quarvo_format;
  EXPECT_EQ(search("", "s"), ">s\nsequence length: 0\n");
  EXPECT_EQ(repeats, texts{});
}

}  // namespace
