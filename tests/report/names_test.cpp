// Which sequences' repeats the page may save as BED, and by which number it tells sequences of one name apart.

#include <gtest/gtest.h>

#include "report-json.h"

namespace {

class ReportNames : public ::testing::Test {
 protected:
  void add(const std::string& name, bool with_repeat = true) {
    results_sequence sequence;
    sequence.ordinal = ++sequences;
    sequence.full_name = sequence.name = name;
    sequence.length = 100;
    figures.add(sequence);
    if (!with_repeat) return;
    results_repeat repeat;
    repeat.start = 1;
    repeat.end = repeat.span = repeat.length = 10;
    repeat.unit_length = 1;
    repeat.unit = repeat.normal_form = "A";
    figures.add(repeat);
    list.add(figures.current_sequence(), repeat);
  }

  // The values of a column of the sequences.
  std::string column(const std::string& name) {
    results_header header;
    const std::string data = report_json(header, "results.txt", figures, list, 1000000);
    const std::size_t from = data.find("\"" + name + "\":[", data.find("\"sequences\":{")) + name.size() + 4;
    return data.substr(from, data.find(']', from) - from);
  }

 private:
  CReportFigures figures;
  CRepeatList list;
  std::int64_t sequences = 0;
};

TEST_F(ReportNames, OrdinalsCountSequencesWithoutRepeats) {
  add("a");
  add("b", false);
  add("c");
  EXPECT_EQ(column("ordinal"), "1,3");
}

TEST_F(ReportNames, NamesThatBeginAsCommentsAndHeadersOfBedAreUnsuited) {
  for (const char* name : {"#c", "track", "browser1", "", "a#", "Track"}) add(name);
  EXPECT_EQ(column("nameFault"), R"("unsuited","unsuited","unsuited","unsuited",null,null)");
}

TEST_F(ReportNames, NamesAreSharedUpToTheirFirstWhiteSpace) {
  add("a\tb");
  add("b");
  add("a");
  EXPECT_EQ(column("nameFault"), R"("shared",null,"shared")");
}

TEST_F(ReportNames, ANameIsAlsoSharedWithASequenceWithoutRepeats) {
  add("a");
  add("a", false);
  EXPECT_EQ(column("nameFault"), R"("shared")");
}

TEST_F(ReportNames, NamesThatAreNotShownAsTheyAreAreAltered) {
  add(std::string(300, 'n'));
  add("latin\xff");
  add("\xc3\xa4");
  EXPECT_EQ(column("nameFault"), R"("altered","altered",null)");
}

}  // namespace
