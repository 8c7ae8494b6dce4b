// The block of one record in the results.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "CSearchController.h"
#include "support/default-parameters.h"
#include "support/stream-text.h"
#include "support/test-record.h"

namespace {

class ReportFraming : public ParameterTest {
 protected:
  CTestRecord record{"ACACACACTT", "chr1 of something"};

  std::string block(bool with_repeat) {
    CSearchController::reset_minimum_arrays();
    CSearchController controller(1, record);
    if (with_repeat) {
      Csat* const sat = sat_alloc.get_new(record.at(0), record.at(2));
      sat->pos_right = record.at(8);
      sat->bwd_unit_cursor = sat->unit_end - 1;
      sat->score = 6;
      controller.result_list.records.push_back(sat);
    }
    return text_of([&](std::FILE* out) { controller.report_SATList(out, controller.result_list.records); });
  }
};

constexpr const char* opening = ">chr1 of something\nsequence length: 10\n";
constexpr const char* closing = "# Analysis of sequence \"chr1 of something\" completed.\n";
constexpr const char* comment_opening = "# Full sequence name:\n#>chr1 of something\n##sequence-region chr1 1 10\n";
constexpr const char* comment_closing = "# Analysis of sequence \"chr1\" completed.\n";

TEST_F(ReportFraming, OfARecordWithoutRepeatsIsItsOpeningAndItsClosing) {
  for (const int format : {quarvo_format, extended_quarvo_format, compact_format}) {
    global_print_sat_mode = format;
    EXPECT_EQ(block(false), std::string(opening) + closing);
  }
}

TEST_F(ReportFraming, OfARecordWithoutRepeatsIsEmptyInTheOtherFormats) {
  for (const int format : {gff_format, one_per_line_format, fasta_format}) {
    global_print_sat_mode = format;
    EXPECT_EQ(block(false), "");
  }
}

TEST_F(ReportFraming, OfARecordWithoutRepeatsIsACommentInGffAndTableWithSequenceInfo) {
  global_sequenceInfoAsComment = true;
  for (const int format : {gff_format, one_per_line_format}) {
    global_print_sat_mode = format;
    EXPECT_EQ(block(false), std::string(comment_opening) + comment_closing);
  }
}

TEST_F(ReportFraming, DoesNotHeedSequenceInfoInTheOtherFormats) {
  global_sequenceInfoAsComment = true;
  global_print_sat_mode = fasta_format;
  EXPECT_EQ(block(false), "");
  global_print_sat_mode = quarvo_format;
  EXPECT_EQ(block(false), std::string(opening) + closing);
}

TEST_F(ReportFraming, HasTheRepeatsBetweenOpeningAndClosing) {
  global_print_sat_mode = quarvo_format;
  global_print_sat_seq_mode = print_sequence;
  EXPECT_EQ(block(true),
            std::string(opening) +
                "    dinucleotide         1 :         8 |      8 bp |      8 BP |      6 pt | 100.000 % | unit AC\n"
                "ACACACAC\n" +
                closing);
}

TEST_F(ReportFraming, InFastaIsNothingButTheRepeats) {
  global_print_sat_mode = fasta_format;
  EXPECT_EQ(block(true), ">chr1 1 8 2 1 8 4.000 6 100.000 0 0 0\nACACACAC\n");
}

TEST_F(ReportFraming, HasNoTraceOfARepeatThatIsLeftOut) {
  global_print_sat_mode = extended_quarvo_format;
  global_max_perfection = 99.0F;
  EXPECT_EQ(block(true), std::string(opening) + closing);
}

TEST_F(ReportFraming, TakesNamesWithPercentSignsAsTheyAre) {
  record.full_name.assign("100%s %n");
  record.short_name.assign("100%s");
  global_print_sat_mode = quarvo_format;
  EXPECT_EQ(block(false), ">100%s %n\nsequence length: 10\n# Analysis of sequence \"100%s %n\" completed.\n");
}

TEST_F(ReportFraming, IsFlushed) {
  std::FILE* const file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  CSearchController controller(1, record);
  controller.report_SATList(file, {});
  struct stat info {};
  ASSERT_EQ(fstat(fileno(file), &info), 0);
  EXPECT_EQ(info.st_size, static_cast<off_t>(std::string(opening).size() + std::string(closing).size()));
  std::fclose(file);
}

}  // namespace
