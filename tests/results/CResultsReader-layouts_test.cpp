// Every layout that a run can give its results, read back: all tell the same repeats.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "read-results.h"

namespace {

using words = std::vector<std::string>;

// Edits of each kind, N's inside and at the ends, long units, neighbours, records without repeats and without names.
constexpr const char* input =
    ">mixed edits of every kind\n"
    "GTACACACACACACACTCACACACACACAGTTTGACGATTGATTGATTGATTCATTGATTGATTGCC\n"
    "GGCAGCAGCAGAGCAGCAGCAGCAGTCAGCAGCAGGTNNNTCTCTCTCTCNCTCTCTCTCNNTCTCTCTG\n"
    ">none nothing to find here\nACGTTGCA\n"
    ">\tthe\tname has tabs\nAAAAAAAAAAAAAAAAAAACACACACACACACACACAC\n"
    "> no name\nGGGGGGGGGGGGGG\n"
    ">long\n"
    "ACGTTGCAAGGCTTAACGTTGCAAGGCTTAACGTTGCAAGGCTTAACGTTGCAAGGCATAACGTTGCAAGGCTTA\n"
    ">Ns\nNNNNNNNNNNNNACACACACNACACACACANNACACACACNNN\n"
    ">\n";

class ResultsLayouts : public ResultsTest {
 protected:
  ResultsLayouts() { directory.write("in.fas", input); }

  static words with(words options, const words& more) {
    options.insert(options.end(), more.begin(), more.end());
    return options;
  }

  static void expect_same_repeat(const results_repeat& a, const results_repeat& b) {
    EXPECT_EQ(a.start, b.start);
    EXPECT_EQ(a.end, b.end);
    EXPECT_EQ(a.span, b.span);
    EXPECT_EQ(a.length, b.length);
    EXPECT_EQ(a.score, b.score);
    EXPECT_TRUE(a.perfection == b.perfection || (std::isnan(a.perfection) && std::isnan(b.perfection)));
    EXPECT_EQ(a.unit_length, b.unit_length);
    EXPECT_EQ(a.unit, b.unit);
    EXPECT_EQ(a.normal_form, b.normal_form);
  }

  // The blocks that have repeats tell the same repeats of the same sequences.
  static void expect_same(const whole_results& a, const whole_results& b) {
    ASSERT_FALSE(a.error) << a.text;
    ASSERT_FALSE(b.error) << b.text;
    const auto with_repeats = [](std::vector<whole_results::block> blocks) {
      std::erase_if(blocks, [](const auto& block) { return block.repeats.empty(); });
      return blocks;
    };
    const auto left = with_repeats(a.blocks);
    const auto right = with_repeats(b.blocks);
    ASSERT_EQ(left.size(), right.size());
    for (std::size_t i = 0; i != left.size(); ++i) {
      EXPECT_EQ(left[i].sequence.name, right[i].sequence.name);
      ASSERT_EQ(left[i].repeats.size(), right[i].repeats.size());
      for (std::size_t j = 0; j != left[i].repeats.size(); ++j) {
        expect_same_repeat(left[i].repeats[j], right[i].repeats[j]);
      }
    }
  }
};

const words modes[] = {{"-M", "exact"}, {"-M", "extendExact"}, {"-M", "imperfect"}};
const words settings[] = {{},
                          {"-f", "7"},
                          {"-f", "1000", "--NsAsMissense"},
                          {"--reportUnit", "0", "-U", "20"},
                          {"--reportUnit", "1", "--NPerfectionMode", "1", "-D"},
                          {"--NPerfectionMode", "2", "--maskX", "-N", "9", "-s", "2", "--minScore_b", "0"},
                          {"--firstSeq", "2", "--lastSeq", "3"}};

TEST_F(ResultsLayouts, TellTheSameRepeats) {
  std::size_t repeats = 0;
  for (const words& mode : modes) {
    for (const words& setting : settings) {
      const words common = with(mode, setting);
      const whole_results table = read_run(with(common, {"--outputFormat", "3"}));
      repeats += table.repeat_count();
      expect_same(read_run(with(common, {"--outputFormat", "3", "--sequenceInfoAsComment"})), table);
      for (const char* format : {"0", "1"}) {
        for (const char* print : {"0", "1", "2"}) {
          expect_same(read_run(with(common, {"--outputFormat", format, "--printRepeatSeqMode", print})), table);
        }
      }
    }
  }
  EXPECT_GT(repeats, 100U);
}

TEST_F(ResultsLayouts, TellTheSequencesInEveryFormatThatNamesThem) {
  const whole_results plain = read_run({"--outputFormat", "0"});
  ASSERT_FALSE(plain.error) << plain.text;
  ASSERT_EQ(plain.blocks.size(), 7U);
  EXPECT_EQ(plain.blocks[0].sequence.name, "mixed");
  EXPECT_EQ(plain.blocks[0].sequence.full_name, "mixed edits of every kind");
  EXPECT_EQ(plain.blocks[1].sequence.length, 8);
  EXPECT_EQ(plain.blocks[2].sequence.name, "\tthe\tname");
  EXPECT_EQ(plain.blocks[3].sequence.name, "");
  EXPECT_EQ(plain.blocks[6].sequence.name, "");
  EXPECT_EQ(plain.blocks[6].sequence.length, 0);
  const whole_results table = read_run({"--outputFormat", "3", "--sequenceInfoAsComment"});
  ASSERT_EQ(table.blocks.size(), plain.blocks.size()) << table.text;
  for (std::size_t i = 0; i != plain.blocks.size(); ++i) {
    EXPECT_EQ(plain.blocks[i].sequence.ordinal, static_cast<std::int64_t>(i) + 1);
    EXPECT_EQ(table.blocks[i].sequence.ordinal, plain.blocks[i].sequence.ordinal);
    EXPECT_EQ(table.blocks[i].sequence.name, plain.blocks[i].sequence.name);
    EXPECT_EQ(table.blocks[i].sequence.full_name, plain.blocks[i].sequence.full_name);
    EXPECT_EQ(table.blocks[i].sequence.length, plain.blocks[i].sequence.length);
  }
}

TEST_F(ResultsLayouts, GiveTheSameSequencesAndFlanks) {
  for (const char* flanking : {"0", "4"}) {
    const whole_results table = read_run({"--outputFormat", "3", "-f", flanking});
    for (const char* print : {"1", "2"}) {
      const whole_results text = read_run({"--printRepeatSeqMode", print, "-f", flanking});
      std::vector<results_repeat> repeats;
      for (const auto& block : text.blocks) {
        repeats.insert(repeats.end(), block.repeats.begin(), block.repeats.end());
      }
      ASSERT_EQ(repeats.size(), table.repeat_count());
      std::size_t i = 0;
      for (const auto& block : table.blocks) {
        for (const results_repeat& repeat : block.repeats) {
          EXPECT_EQ(repeats[i].sequence, repeat.sequence);
          EXPECT_EQ(repeats[i].left_flank, repeat.left_flank);
          EXPECT_EQ(repeats[i].right_flank, repeat.right_flank);
          EXPECT_EQ(repeat.left_flank.has_value(), flanking[0] != '0');
          ++i;
        }
      }
    }
  }
}

TEST_F(ResultsLayouts, GiveTheSameEditsInFormats1And3) {
  const whole_results extended = read_run({"--outputFormat", "1", "--printRepeatSeqMode", "0"});
  const whole_results table = read_run({"--outputFormat", "3", "--sequenceInfoAsComment"});
  ASSERT_EQ(extended.blocks.size(), table.blocks.size());
  int edits = 0;
  for (std::size_t i = 0; i != table.blocks.size(); ++i) {
    ASSERT_EQ(extended.blocks[i].repeats.size(), table.blocks[i].repeats.size());
    for (std::size_t j = 0; j != table.blocks[i].repeats.size(); ++j) {
      const results_repeat& one = extended.blocks[i].repeats[j];
      const results_repeat& other = table.blocks[i].repeats[j];
      EXPECT_EQ(one.mismatches, other.mismatches);
      EXPECT_EQ(one.insertions, other.insertions);
      EXPECT_EQ(one.deletions, other.deletions);
      EXPECT_EQ(one.Ns, other.Ns);
      EXPECT_FALSE(other.edits.has_value());
      const auto count = [&one](char kind) {
        return std::count_if(one.edits->begin(), one.edits->end(), [kind](auto edit) { return edit.kind == kind; });
      };
      EXPECT_EQ(count('M'), one.mismatches);
      EXPECT_EQ(count('I'), one.insertions);
      EXPECT_EQ(count('D'), one.deletions);
      edits += static_cast<int>(one.edits->size());
    }
  }
  EXPECT_GT(edits, 2);
}

TEST_F(ResultsLayouts, GiveAlignmentsThatSpellSequenceAndEdits) {
  for (const char* flanking : {"0", "3"}) {
    const whole_results whole = read_run({"--outputFormat", "1", "-f", flanking});
    ASSERT_FALSE(whole.error) << whole.text;
    for (const auto& block : whole.blocks) {
      for (const results_repeat& repeat : block.repeats) {
        const auto& lines = *repeat.alignment;
        EXPECT_EQ(lines.sequence.size(), static_cast<std::size_t>(repeat.span + *repeat.deletions));
        EXPECT_EQ(std::count(lines.sequence.begin(), lines.sequence.end(), '-'), repeat.deletions);
        EXPECT_EQ(std::count(lines.unit.begin(), lines.unit.end(), '-'), repeat.insertions);
        EXPECT_EQ(std::count(lines.markers.begin(), lines.markers.end(), ' '),
                  *repeat.mismatches + *repeat.insertions + *repeat.deletions);
      }
    }
  }
}

TEST_F(ResultsLayouts, LeaveOutWhatTheirLinesDoNotTell) {
  const results_repeat plain = read_run({"--outputFormat", "0", "--printRepeatSeqMode", "0"}).blocks[0].repeats[0];
  EXPECT_FALSE(plain.mismatches || plain.insertions || plain.deletions || plain.Ns || plain.edits);
  EXPECT_FALSE(plain.sequence || plain.left_flank || plain.right_flank || plain.alignment);
  const results_repeat missense = read_run({"--outputFormat", "3", "--NsAsMissense"}).blocks[0].repeats[0];
  EXPECT_TRUE(missense.mismatches && missense.sequence);
  EXPECT_FALSE(missense.Ns || missense.alignment);
}

TEST_F(ResultsLayouts, GiveTheNormalFormOfUnitsAsTheProgramDoes) {
  const whole_results found = read_run({"--outputFormat", "0", "--reportUnit", "0"});
  const whole_results normal = read_run({"--outputFormat", "0", "--reportUnit", "2"});
  ASSERT_EQ(found.repeat_count(), normal.repeat_count());
  int different = 0;
  for (std::size_t i = 0; i != found.blocks.size(); ++i) {
    for (std::size_t j = 0; j != found.blocks[i].repeats.size(); ++j) {
      const results_repeat& repeat = found.blocks[i].repeats[j];
      EXPECT_EQ(repeat.normal_form, normal.blocks[i].repeats[j].unit);
      different += repeat.normal_form != repeat.unit ? 1 : 0;
    }
  }
  EXPECT_GT(different, 2);
}

TEST_F(ResultsLayouts, ReadAPerfectionThatIsNoNumber) {
  ASSERT_FALSE(read_run({"--outputFormat", "0"}).error);
  for (const char* text : {"   -nan %", "    nan %"}) {
    std::string changed = written();
    changed.replace(changed.find("100.000 %"), 9, text);
    const whole_results whole = read_text(changed);
    ASSERT_FALSE(whole.error) << whole.text;
    std::size_t without = 0;
    for (const auto& block : whole.blocks) {
      for (const results_repeat& repeat : block.repeats) without += std::isnan(repeat.perfection) ? 1 : 0;
    }
    EXPECT_EQ(without, 1U);
  }
}

}  // namespace
