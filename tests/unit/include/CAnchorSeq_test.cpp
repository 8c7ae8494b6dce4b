#include "CAnchorSeq.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "CsatContainer.h"
#include "support/random-dna.h"
#include "support/test-record.h"

namespace {

// The positions from -1 to the length, "a" where they are free.
std::string states_of(const CAnchorSeq& mask) {
  std::string states;
  for (int p = -1; p <= static_cast<int>(mask.length); ++p) states += mask.is_free(mask.seq_begin + p) ? 'a' : ' ';
  return states;
}

// Covers the positions that are blank in `states`, which begins with that in front of the first.
void cover_blanks(CAnchorSeq& mask, const std::string& states) {
  mask.free_all();
  Csat sat;
  for (std::size_t i = 1; i + 1 < states.size(); ++i) {
    if (states[i] == 'a') continue;
    sat.reset(mask.seq_begin + i - 1, mask.seq_begin + i);
    mask.cover(sat);
  }
}

class AnchorMask : public ::testing::Test {
 protected:
  CTestRecord record{"ACACACACAC"};
  CAnchorSeq mask{record};
  CsatContainer made{sat_alloc};

  std::string states() const { return states_of(mask); }

  Csat& repeat(int left, int right) {
    Csat* const sat = sat_alloc.get_new(record.at(left), record.at(left + 1));
    sat->pos_right = record.at(right);
    made.records.push_back(sat);
    return *sat;
  }
};

TEST_F(AnchorMask, StartsFreeWithAGuardOnEachSide) {
  EXPECT_EQ(states(), "aaaaaaaaaaaa");
  EXPECT_EQ(mask.seq_begin, record.begin());
}

TEST_F(AnchorMask, OfAnEmptySequenceIsTheTwoGuards) {
  const CTestRecord empty("");
  EXPECT_EQ(states_of(CAnchorSeq(empty)), "aa");
}

TEST_F(AnchorMask, CoversARepeat) {
  mask.cover(repeat(2, 5));
  EXPECT_EQ(states(), "aaa   aaaaaa");
}

TEST_F(AnchorMask, KeepsItsGuardsUnderARepeatOfTheWholeSequence) {
  mask.cover(repeat(0, 10));
  EXPECT_EQ(states(), "a          a");
}

TEST_F(AnchorMask, FreesThePositionsOfEdits) {
  Csat& sat = repeat(0, 10);
  sat.add_missense(record.at(3), 'M');
  sat.add_missense(record.at(7), 'D');
  mask.cover(sat);
  EXPECT_EQ(states(), "a   a   a  a");
}

TEST_F(AnchorMask, FreesAnEditAtTheEndOfTheSequenceInItsGuard) {
  Csat& sat = repeat(0, 10);
  sat.add_missense(record.at(10), 'D');
  mask.cover(sat);
  EXPECT_EQ(states(), "a          a");
}

TEST_F(AnchorMask, FreeAllUncoversEverything) {
  mask.cover(repeat(0, 10));
  mask.free_all();
  EXPECT_EQ(states(), "aaaaaaaaaaaa");
}

TEST_F(AnchorMask, LetsAUnitOfOneSymbolAnchorWhereItsOwnPositionIsFree) {
  mask.cover(repeat(3, 6));
  for (int p = 0; p < 10; ++p) EXPECT_EQ(mask.may_anchor(record.at(p), 1), p < 3 || p >= 6) << p;
}

TEST_F(AnchorMask, RefusesUnitsInsideACoveredStretch) {
  mask.cover(repeat(2, 8));
  EXPECT_FALSE(mask.may_anchor(record.at(3), 2));
  EXPECT_FALSE(mask.may_anchor(record.at(2), 3));
}

TEST_F(AnchorMask, AcceptsAUnitThatBridgesACoveredStretch) {
  mask.cover(repeat(2, 5));
  EXPECT_TRUE(mask.may_anchor(record.at(1), 5));  // both of its ends are free
}

TEST_F(AnchorMask, AcceptsAUnitWithAFreeStartAndAFreeSymbolBehindIt) {
  mask.cover(repeat(2, 5));
  EXPECT_TRUE(mask.may_anchor(record.at(1), 4));
  EXPECT_FALSE(mask.may_anchor(record.at(1), 3));
}

TEST_F(AnchorMask, AcceptsAUnitWithAFreeEndAndAFreeSymbolBeforeIt) {
  mask.cover(repeat(2, 5));
  EXPECT_TRUE(mask.may_anchor(record.at(2), 4));
  EXPECT_FALSE(mask.may_anchor(record.at(3), 3));
}

TEST_F(AnchorMask, AnchorsUnitsByTheirEndsAndTheirNeighbours) {
  CRandomDna random(3);
  for (int round = 0; round < 200; ++round) {
    std::string state = random.sequence("a ", 12);
    state.front() = state.back() = 'a';  // outside of the sequence
    cover_blanks(mask, state);
    ASSERT_EQ(states(), state);
    const auto is_free = [&state](int position) { return state[static_cast<std::size_t>(position + 1)] == 'a'; };
    for (int L = 1; L <= 9; ++L) {
      for (int p = 0; p + L < 10; ++p) {
        const bool expected =
            (is_free(p) && (is_free(p + L - 1) || is_free(p + L))) || (is_free(p - 1) && is_free(p + L - 1));
        ASSERT_EQ(mask.may_anchor(record.at(p), static_cast<unsigned>(L)), expected) << state << " " << p << " " << L;
      }
    }
  }
}

TEST(AnchorMaskOfManyPositions, Anchors64UnitsAtOnceAsOneByOne) {
  CRandomDna random(4);
  const CTestRecord record(random.sequence("ACGT", 200));
  CAnchorSeq mask(record);
  for (int round = 0; round < 100; ++round) {
    const std::string state = 'a' + random.sequence(round % 2 == 0 ? "a " : "aaaaaaa ", 200) + 'a';
    cover_blanks(mask, state);
    for (const int L : {1, 2, 7, 63, 64, 100, 136}) {
      // Of the last ones, some units have no symbol after them: their bits may be anything.
      const int p = random.number(0, 200 - L - 1);
      const std::uint64_t bits = mask.may_anchor_64(record.at(p), static_cast<unsigned>(L));
      for (int i = 0; i < 64 && p + i + L < 200; ++i) {
        const auto is_free = [&](int position) { return state[static_cast<std::size_t>(position + 1)] == 'a'; };
        const int at = p + i;
        const bool expected =
            (is_free(at) && (is_free(at + L - 1) || is_free(at + L))) || (is_free(at - 1) && is_free(at + L - 1));
        ASSERT_EQ((bits >> i & 1) != 0, expected) << state << " " << at << " " << L;
      }
    }
  }
}

TEST(AnchorMaskOfManyPositions, CoversAndFindsFreePositionsAcrossWords) {
  CRandomDna random(5);
  const CTestRecord record(random.sequence("ACGT", 400));
  Csat sat;
  for (int round = 0; round < 300; ++round) {
    CAnchorSeq mask(record);
    std::string expected(402, 'a');
    for (int repeat = 0; repeat < 4; ++repeat) {
      const int from = random.number(0, 399);
      const int to = random.number(from + 1, 400);
      sat.reset(record.at(from), record.at(to));
      sat.add_missense(record.at(random.number(from, to - 1)), 'M');
      mask.cover(sat);
      std::fill(expected.begin() + from + 1, expected.begin() + to + 1, ' ');
      expected[static_cast<std::size_t>(sat.missense->position - record.begin()) + 1] = 'a';
    }
    ASSERT_EQ(states_of(mask), expected);
    for (int p = -1; p <= 400; ++p) {
      const auto free = expected.find('a', static_cast<std::size_t>(p + 1));
      ASSERT_EQ(mask.next_free(record.begin() + p) - record.begin(), static_cast<std::ptrdiff_t>(free) - 1) << p;
    }
  }
}

}  // namespace
