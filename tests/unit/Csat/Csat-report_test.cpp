// One repeat in the output formats.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "global-types-and-parameters.h"
#include "support/default-parameters.h"
#include "support/reported-repeat.h"

namespace {

class Report : public ParameterTest {
 protected:
  Report() { global_print_sat_seq_mode = print_no_sequence; }
};

TEST_F(Report, InQuarvoFormat) {
  global_print_sat_mode = quarvo_format;
  EXPECT_EQ(CExampleRepeat().report(),
            "    dinucleotide         1 :        15 |     15 bp |     14 BP |      7 pt |  92.857 % | unit AC\n");
}

TEST_F(Report, InExtendedQuarvoFormatWithItsEdits) {
  EXPECT_EQ(CExampleRepeat().report(),
            "    dinucleotide         1 :        15 |     15 bp |     14 BP |      7 pt |  92.857 % | "
            "  0 mis |   1 ins |   0 del |   0 N |  unit AC\n"
            "Missense: (7,I),\n");
}

TEST_F(Report, InExtendedQuarvoFormatWithoutEdits) {
  EXPECT_EQ(CReportedRepeat("GGAATAATAATCC", 2, 11, 3).report(),
            "   trinucleotide         3 :        11 |      9 bp |      9 BP |      6 pt | 100.000 % | "
            "  0 mis |   0 ins |   0 del |   0 N |  unit AAT\n"
            "Missense: \n");
}

TEST_F(Report, InExtendedQuarvoFormatWithoutNsWhenTheyAreMissense) {
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(CExampleRepeat().report(),
            "    dinucleotide         1 :        15 |     15 bp |     14 BP |      7 pt |  92.857 % | "
            "  0 mis |   1 ins |   0 del |  unit AC\n"
            "Missense: (7,I),\n");
}

TEST_F(Report, CountsThePositionsOfEditsFromTheStartOfTheRepeat) {
  CReportedRepeat repeat(repeated("T", 20) + "ACACGCACACGGACAC" + "TT", 20, 36, 2);
  repeat.add(24, 'M');
  repeat.add(30, 'D');
  repeat.add(31, 'I');
  const std::string report = repeat.report();
  EXPECT_NE(report.find("\nMissense: (5,M),(11,D),(12,I),\n"), std::string::npos) << report;
}

TEST_F(Report, NamesUnitsOfMoreThanSixSymbolsByTheirLength) {
  global_print_sat_mode = quarvo_format;
  EXPECT_EQ(CReportedRepeat("AACCGTTAACCGTTAACC", 0, 18, 7).report(),
            "    7-nucleotide         1 :        18 |     18 bp |     18 BP |     11 pt | 100.000 % | unit AACCGTT\n");
}

TEST_F(Report, InGff) {
  global_print_sat_mode = gff_format;
  EXPECT_EQ(
      CExampleRepeat("TTT").report(),
      "seq1\tQuarvo\ttandem-repeat\t4\t18\t92.86\t.\t.\tName=\"repeat_region 4-18 unit_size 2 repeat_number 7.000 "
      "perfection 92.857 unit AC\"\n");
}

std::string primitive_unit(int length) { return std::string(static_cast<std::size_t>(length - 1), 'A') + "C"; }

TEST_F(Report, InGffHasAUnitOfFiftySymbolsInFullAndOneMoreAsADot) {
  global_print_sat_mode = gff_format;
  const std::string fifty = primitive_unit(50);
  const std::string in_full = CReportedRepeat(fifty + fifty, 0, 100, 50).report();
  EXPECT_NE(in_full.find(" perfection 100.000 unit " + fifty + "\"\n"), std::string::npos) << in_full;
  const std::string one_more = primitive_unit(51);
  const std::string as_a_dot = CReportedRepeat(one_more + one_more, 0, 102, 51).report();
  EXPECT_NE(as_a_dot.find(" unit_size 51 repeat_number 2.000 perfection 100.000 unit .\"\n"), std::string::npos);
}

TEST_F(Report, AsATableLine) {
  global_print_sat_mode = one_per_line_format;
  EXPECT_EQ(CExampleRepeat("TTT").report(),
            "seq1\t2\t92.857\t4\t18\t15\t  7.000\t7\t0\t1\t0\t0\tAC\tACACACGACACACAC\n");
}

TEST_F(Report, AsATableLineWithADotForNsWhenTheyAreMissense) {
  global_print_sat_mode = one_per_line_format;
  global_treat_Ns_as_missense = true;
  EXPECT_EQ(CExampleRepeat("TTT").report(),
            "seq1\t2\t92.857\t4\t18\t15\t  7.000\t7\t0\t1\t0\t.\tAC\tACACACGACACACAC\n");
}

TEST_F(Report, AsATableLineCountsNs) {
  global_print_sat_mode = one_per_line_format;
  CReportedRepeat repeat("ACACNNACAC", 0, 10, 2);
  repeat.sat.score = 6;
  repeat.sat.number_of_Ns = 2;
  EXPECT_EQ(repeat.report(), "seq1\t2\t80.000\t1\t10\t10\t  5.000\t6\t0\t0\t0\t2\tAC\tACACNNACAC\n");
}

TEST_F(Report, AsFasta) {
  global_print_sat_mode = fasta_format;
  EXPECT_EQ(CExampleRepeat("TTT").report(), ">seq1 1 15 2 4 18 7.000 7 92.857 0 1 0\nACACACGACACACAC\n");
}

TEST_F(Report, InCompactFormatRoundsThePerfection) {
  global_print_sat_mode = compact_format;
  EXPECT_EQ(CExampleRepeat().report(), "dinucleotide 1 : 15 -- length 14 score 7 perfection 93 unit AC\n");
  CReportedRepeat half(repeated("AC", 100), 0, 200, 2);
  half.add(7, 'M');
  EXPECT_NE(half.report().find(" perfection 100 unit "), std::string::npos);  // 99.5
  half.add(9, 'M');
  EXPECT_NE(half.report().find(" perfection 99 unit "), std::string::npos);
}

TEST_F(Report, InCompactFormatNamesLongUnitsWithoutPadding) {
  global_print_sat_mode = compact_format;
  EXPECT_EQ(CReportedRepeat("AACCGTTAACCGTTAACC", 0, 18, 7).report(),
            "7-nucleotide 1 : 18 -- length 18 score 11 perfection 100 unit AACCGTT\n");
}

TEST_F(Report, InAnUnknownFormatIsAnInternalError) {
  global_print_sat_mode = 6;
  EXPECT_EQ(CExampleRepeat().report(), "Internal error. Unknown output format. Please report this bug");
}

TEST_F(Report, OfARepeatThatLacksSymbolsHasALongerAlignedLength) {
  global_print_sat_mode = one_per_line_format;
  CReportedRepeat repeat("ACGACGACGACACGACGACG", 0, 20, 3);
  repeat.add(11, 'D');
  repeat.sat.score = 12;
  EXPECT_EQ(repeat.report(), "seq1\t3\t95.238\t1\t20\t20\t  7.000\t12\t0\t0\t1\t0\tACG\tACGACGACGACACGACGACG\n");
}

TEST_F(Report, WritesAPerfectionAtEitherBoundAndNoneBeyond) {
  global_print_sat_mode = fasta_format;
  CExampleRepeat repeat;
  const float perfection = repeat.sat.perfection();
  global_min_perfection = global_max_perfection = perfection;
  EXPECT_NE(repeat.report(), "");
  global_min_perfection = std::nextafter(perfection, 100.0F);
  global_max_perfection = 100.0F;
  EXPECT_EQ(repeat.report(), "");
  global_min_perfection = 0.0F;
  global_max_perfection = std::nextafter(perfection, 0.0F);
  EXPECT_EQ(repeat.report(), "");
}

TEST_F(Report, WritesARepeatOfNothingButNsWhenTheyAreLeftOut) {
  global_print_sat_mode = one_per_line_format;
  global_N_and_perfection_mode = Ns_as_neutral;
  CReportedRepeat repeat("ACNN", 0, 2, 2);
  repeat.sat.pos_left = repeat.record.at(2);
  repeat.sat.pos_right = repeat.record.at(4);
  repeat.sat.number_of_Ns = 2;
  const std::string report = repeat.report();
  EXPECT_EQ(report.substr(0, 7), "seq1\t2\t") << report;
  EXPECT_NE(report.find("nan\t3\t4\t2\t"), std::string::npos) << report;
}

class ReportOfUnits : public Report {
 protected:
  // The unit as it is reported; empty for a repeat that is not written.
  static std::string reported(const std::string& unit, int mode) {
    global_report_unit_mode = mode;
    global_print_sat_mode = one_per_line_format;
    const auto L = static_cast<int>(unit.size());
    std::string line = CReportedRepeat(unit + unit, 0, 2 * L, L).report();
    for (int column = 0; column < 12 && !line.empty(); ++column) line.erase(0, line.find('\t') + 1);
    return line.substr(0, line.find('\t'));
  }
};

TEST_F(ReportOfUnits, AsTheyAre) {
  EXPECT_EQ(reported("TAC", unit_as_is), "TAC");
  EXPECT_EQ(reported("CA", unit_as_is), "CA");
}

TEST_F(ReportOfUnits, InNormalForm) {
  EXPECT_EQ(reported("TAC", unit_normal_form), "ACT");
  EXPECT_EQ(reported("TG", unit_normal_form), "GT");
}

TEST_F(ReportOfUnits, InNormalFormWithComplement) {
  EXPECT_EQ(reported("TAC", unit_normal_form_with_complement), "ACT");
  EXPECT_EQ(reported("CA", unit_normal_form_with_complement), "AC");
  EXPECT_EQ(reported("TG", unit_normal_form_with_complement), "AC");
  EXPECT_EQ(reported("T", unit_normal_form_with_complement), "A");
  EXPECT_EQ(reported("GGTTA", unit_normal_form_with_complement), "AACCT");  // AGGTT of its own
}

TEST_F(ReportOfUnits, WithAnSWhoseComplementIsAQuestionMark) {
  EXPECT_EQ(reported("SG", unit_normal_form_with_complement), "?C");
  EXPECT_EQ(reported("SG", unit_normal_form), "GS");
}

TEST_F(ReportOfUnits, MadeOfAShorterOneAreNeverWritten) {
  for (const int mode : {unit_as_is, unit_normal_form, unit_normal_form_with_complement}) {
    EXPECT_EQ(reported("ATAT", mode), "") << mode;
    EXPECT_EQ(reported("AACAAC", mode), "") << mode;
    EXPECT_EQ(reported(repeated("ACGTT", 7), mode), "") << mode;
  }
}

// Cut into as many parts as it has symbols a unit is not looked at; no search makes such units.
TEST_F(ReportOfUnits, OfOneSymbolAPrimeNumberOfTimesAreWrittenOnlyAsTheyAre) {
  EXPECT_EQ(reported("CC", unit_as_is), "CC");
  EXPECT_EQ(reported("CC", unit_normal_form), "");
  EXPECT_EQ(reported("CC", unit_normal_form_with_complement), "");
}

TEST_F(ReportOfUnits, WithEqualPartsThatDoNotRepeatAreWritten) {
  for (const int mode : {unit_as_is, unit_normal_form, unit_normal_form_with_complement}) {
    EXPECT_EQ(reported("AACAAG", mode), "AACAAG") << mode;
    EXPECT_EQ(reported("AAT", mode), "AAT") << mode;
    EXPECT_EQ(reported("ACACA", mode), mode == unit_as_is ? "ACACA" : "AACAC") << mode;
  }
}

}  // namespace
