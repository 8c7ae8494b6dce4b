#include "CAnchorSeq.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "CsatContainer.h"
#include "support/random-dna.h"
#include "support/test-record.h"

namespace {

class AnchorMask : public ::testing::Test {
 protected:
  CTestRecord record{"ACACACACAC"};
  CAnchorSeq mask{record};
  CsatContainer made{sat_alloc};

  // The mask with its guards and its terminator.
  std::string bytes() const { return {mask.buffer.get(), mask.length + 3U}; }
  static std::string terminated(const std::string& text) { return text + '\0'; }

  Csat& repeat(int left, int right) {
    Csat* const sat = sat_alloc.get_new(record.at(left), record.at(left + 1));
    sat->pos_right = record.at(right);
    made.records.push_back(sat);
    return *sat;
  }
};

TEST_F(AnchorMask, StartsFreeWithAGuardOnEachSide) {
  EXPECT_EQ(bytes(), terminated("aaaaaaaaaaaa"));
  EXPECT_EQ(mask.mask_begin, mask.buffer.get() + 1);
  EXPECT_EQ(mask.mask_end, mask.buffer.get() + 11);
  EXPECT_EQ(mask.seq_begin, record.begin());
}

TEST_F(AnchorMask, OfAnEmptySequenceIsTheTwoGuards) {
  const CTestRecord empty("");
  const CAnchorSeq guards(empty);
  EXPECT_EQ(std::string(guards.buffer.get(), 3), terminated("aa"));
}

TEST_F(AnchorMask, CoversARepeat) {
  mask.cover(repeat(2, 5));
  EXPECT_EQ(bytes(), terminated("aaa   aaaaaa"));
}

TEST_F(AnchorMask, KeepsItsGuardsUnderARepeatOfTheWholeSequence) {
  mask.cover(repeat(0, 10));
  EXPECT_EQ(bytes(), terminated("a          a"));
}

TEST_F(AnchorMask, FreesThePositionsOfEdits) {
  Csat& sat = repeat(0, 10);
  sat.add_missense(record.at(3), 'M');
  sat.add_missense(record.at(7), 'D');
  mask.cover(sat);
  EXPECT_EQ(bytes(), terminated("a   a   a  a"));
}

TEST_F(AnchorMask, FreesAnEditAtTheEndOfTheSequenceInItsGuard) {
  Csat& sat = repeat(0, 10);
  sat.add_missense(record.at(10), 'D');
  mask.cover(sat);
  EXPECT_EQ(bytes(), terminated("a          a"));
}

TEST_F(AnchorMask, FreeAllUncoversEverything) {
  mask.cover(repeat(0, 10));
  mask.free_all();
  EXPECT_EQ(bytes(), terminated("aaaaaaaaaaaa"));
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
    state.front() = state.back() = 'a';  // the guards
    std::copy(state.begin(), state.end(), mask.buffer.get());
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
    const std::string state = random.sequence(round % 2 == 0 ? "a " : "aaaaaaa ", 200);
    std::copy(state.begin(), state.end(), mask.mask_begin);
    for (const int L : {1, 2, 7, 63, 64, 100, 136}) {
      const int p = random.number(0, 200 - L - 64);
      const std::uint64_t bits = mask.may_anchor_64(record.at(p), static_cast<unsigned>(L));
      for (int i = 0; i < 64; ++i) {
        ASSERT_EQ((bits >> i & 1) != 0, mask.may_anchor(record.at(p + i), static_cast<unsigned>(L)))
            << state << " " << p << " + " << i << " " << L;
      }
    }
  }
}

}  // namespace
