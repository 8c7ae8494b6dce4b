// What stands below a repeat's line, and the flanks in every format.

#include <gtest/gtest.h>

#include <string>

#include "global-types-and-parameters.h"
#include "support/default-parameters.h"
#include "support/reported-repeat.h"

namespace {

class ReportedSequence : public ParameterTest {
 protected:
  ReportedSequence() { global_print_sat_mode = quarvo_format; }

  // What follows the repeat's line.
  static std::string below(CReportedRepeat& repeat) {
    const std::string report = repeat.report();
    return report.substr(report.find('\n') + 1);
  }
};

TEST_F(ReportedSequence, IsLeftOutInModeZero) {
  global_print_sat_seq_mode = print_no_sequence;
  CExampleRepeat repeat;
  EXPECT_EQ(below(repeat), "");
}

TEST_F(ReportedSequence, StandsAloneWithoutFlanks) {
  global_print_sat_seq_mode = print_sequence;
  CExampleRepeat repeat("TTT", "GGG");
  EXPECT_EQ(below(repeat), "ACACACGACACACAC\n");
}

TEST_F(ReportedSequence, StandsBetweenItsFlanks) {
  global_print_sat_seq_mode = print_sequence;
  global_flanking = 2;
  CExampleRepeat repeat("CTT", "GGA");
  EXPECT_EQ(below(repeat), "TT:ACACACGACACACAC:GG\n");
}

TEST_F(ReportedSequence, HasFlanksCutAtTheSequenceEnds) {
  global_print_sat_seq_mode = print_sequence;
  global_flanking = 5;
  CExampleRepeat repeat("CT", "G");
  EXPECT_EQ(below(repeat), "CT:ACACACGACACACAC:G\n");
}

TEST_F(ReportedSequence, AtTheStartOfTheSequenceBeginsWithAColon) {
  global_print_sat_seq_mode = print_sequence;
  global_flanking = 3;
  CExampleRepeat repeat("", "GGGG");
  EXPECT_EQ(below(repeat), ":ACACACGACACACAC:GGG\n");
}

TEST_F(ReportedSequence, AtTheEndOfTheSequenceEndsWithAColon) {
  global_print_sat_seq_mode = print_sequence;
  global_flanking = 2147483647;
  CExampleRepeat repeat("GGGG", "");
  EXPECT_EQ(below(repeat), "GGGG:ACACACGACACACAC:\n");
}

TEST_F(ReportedSequence, StandsBelowTheCompactLineToo) {
  global_print_sat_mode = compact_format;
  global_print_sat_seq_mode = print_sequence;
  CExampleRepeat repeat;
  EXPECT_EQ(below(repeat), "ACACACGACACACAC\n");
}

TEST_F(ReportedSequence, StandsBelowTheEditsInExtendedFormat) {
  global_print_sat_mode = extended_quarvo_format;
  global_print_sat_seq_mode = print_sequence;
  CExampleRepeat repeat;
  EXPECT_EQ(below(repeat), "Missense: (7,I),\nACACACGACACACAC\n");
}

TEST_F(ReportedSequence, IsNeverAddedToGffTableAndFasta) {
  CExampleRepeat repeat;
  for (const int format : {gff_format, one_per_line_format, fasta_format}) {
    global_print_sat_mode = format;
    global_print_sat_seq_mode = print_no_sequence;
    const std::string alone = repeat.report();
    for (const int mode : {print_sequence, print_alignment}) {
      global_print_sat_seq_mode = mode;
      EXPECT_EQ(repeat.report(), alone);
    }
  }
}

class Alignment : public ReportedSequence {
 protected:
  Alignment() { global_print_sat_seq_mode = print_alignment; }
};

TEST_F(Alignment, OfAnInsertion) {
  CExampleRepeat repeat("TTT", "GGG");
  EXPECT_EQ(below(repeat),
            "ACACACGACACACAC\n"
            "|||||| ||||||||\n"
            "ACACAC-ACACACAC\n");
}

TEST_F(Alignment, OfAMismatch) {
  CReportedRepeat repeat("ACACGCACAC", 0, 10, 2);
  repeat.add(4, 'M');
  EXPECT_EQ(below(repeat),
            "ACACGCACAC\n"
            "|||| |||||\n"
            "ACACACACAC\n");
}

TEST_F(Alignment, OfADeletion) {
  CReportedRepeat repeat("ACGACGACACGACG", 0, 14, 3);
  repeat.add(8, 'D');
  EXPECT_EQ(below(repeat),
            "ACGACGAC-ACGACG\n"
            "|||||||| ||||||\n"
            "ACGACGACGACGACG\n");
}

TEST_F(Alignment, OfSeveralDeletionsAtOnePlace) {
  CReportedRepeat repeat("ACGTACGTATACGTACGT", 0, 18, 4);
  repeat.add(9, 'D');
  repeat.add(9, 'D');
  EXPECT_EQ(below(repeat),
            "ACGTACGTA--TACGTACGT\n"
            "||||||||| "
            " |||||||||\n"
            "ACGTACGTACGTACGTACGT\n");
}

TEST_F(Alignment, OfAllEditsAtOnePlace) {
  CReportedRepeat repeat("ACGTACGTAGGTACGT", 0, 16, 4);
  repeat.add(9, 'D');
  repeat.add(9, 'I');
  EXPECT_EQ(below(repeat),
            "ACGTACGTA-GGTACGT\n"
            "|||||||||  ||||||\n"
            "ACGTACGTAC-GTACGT\n");
}

TEST_F(Alignment, MarksNsWithAStar) {
  CReportedRepeat repeat("ACACNNACAC", 0, 10, 2);
  EXPECT_EQ(below(repeat),
            "ACACNNACAC\n"
            "||||**||||\n"
            "ACACACACAC\n");
}

TEST_F(Alignment, ShowsAnNThatIsAMismatchWithoutMarker) {
  CReportedRepeat repeat("ACACNCACAC", 0, 10, 2);
  repeat.add(4, 'M');
  EXPECT_EQ(below(repeat),
            "ACACNCACAC\n"
            "|||| |||||\n"
            "ACACACACAC\n");
}

TEST_F(Alignment, BeginsWithTheUnitSymbolBehindTheLeftCursor) {
  CReportedRepeat repeat("GACGACGACG", 1, 10, 3);  // the unit ACG, the repeat begins with the G before it
  repeat.sat.pos_left = repeat.record.at(0);
  repeat.sat.bwd_unit_cursor = repeat.sat.unit_begin + 1;
  EXPECT_EQ(below(repeat),
            "GACGACGACG\n"
            "||||||||||\n"
            "GACGACGACG\n");
}

TEST_F(Alignment, HasFlanksWithoutMarkers) {
  global_flanking = 4;
  CExampleRepeat repeat("CTT", "GGATT");
  EXPECT_EQ(below(repeat),
            "CTT:ACACACGACACACAC:GGAT\n"
            "    |||||| ||||||||     \n"
            "    ACACAC-ACACACAC     \n");
}

TEST_F(Alignment, HasColonsForEmptyFlanks) {
  global_flanking = 1;
  CExampleRepeat repeat;
  EXPECT_EQ(below(repeat),
            ":ACACACGACACACAC:\n"
            " |||||| |||||||| \n"
            " ACACAC-ACACACAC \n");
}

TEST_F(Alignment, NeverMeetsAnEditOutsideTheRepeatNorThoseBehindIt) {
  CReportedRepeat repeat("TACACACGC", 1, 9, 2);
  repeat.add(0, 'M');
  repeat.add(7, 'M');
  EXPECT_EQ(below(repeat),
            "ACACACGC\n"
            "||||||||\n"
            "ACACACAC\n");
}

class Flanks : public ParameterTest {
 protected:
  static std::string report(int format, const std::string& before, const std::string& after) {
    global_print_sat_mode = format;
    return CExampleRepeat(before, after).report();
  }
  static constexpr const char* table_line = "seq1\t2\t92.857\t4\t18\t15\t  7.000\t7\t0\t1\t0\t0\tAC\tACACACGACACACAC";
};

TEST_F(Flanks, AreTheLastColumnsOfATableLine) {
  global_flanking = 2;
  EXPECT_EQ(report(one_per_line_format, "CTT", "GGATT"), std::string(table_line) + "\tTT\tGG\n");
}

TEST_F(Flanks, AreEmptyColumnsOfATableLineAtTheSequenceEnds) {
  global_flanking = 2;
  EXPECT_EQ(report(one_per_line_format, "", ""),
            "seq1\t2\t92.857\t1\t15\t15\t  7.000\t7\t0\t1\t0\t0\tAC\tACACACGACACACAC\t\t\n");
}

TEST_F(Flanks, MoveTheRepeatInsideAFastaSequence) {
  global_flanking = 2;
  EXPECT_EQ(report(fasta_format, "CTT", "GGATT"), ">seq1 3 15 2 4 18 7.000 7 92.857 0 1 0\nTTACACACGACACACACGG\n");
}

TEST_F(Flanks, LeaveAFastaRepeatAtTheSequenceStartFirst) {
  global_flanking = 2;
  EXPECT_EQ(report(fasta_format, "", "GGATT"), ">seq1 1 15 2 1 15 7.000 7 92.857 0 1 0\nACACACGACACACACGG\n");
}

TEST_F(Flanks, DoNotReachGff) {
  const std::string without = report(gff_format, "CTT", "GGATT");
  global_flanking = 2;
  EXPECT_EQ(report(gff_format, "CTT", "GGATT"), without);
}

}  // namespace
