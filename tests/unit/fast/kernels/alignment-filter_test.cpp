// The alignment bound in bit planes: what it keeps, compared with the bound and the extension themselves.

#include "alignment-filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "alignment-program.h"
#include "bit-planes.h"
#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/filter-check.h"

namespace {

class AlignmentFilter : public ParameterTest {
 protected:
  filter_counts counts;  // of cases that the filter applies to

  static CPositionSet keep(const filter_case& c, const alignment_program& program) {
    CBitPlanes planes;
    planes.build(c.symbols.data(), c.symbols.size(), static_cast<std::size_t>(program.reach));
    CPositionSet kept(c.symbols.size());
    run_alignment_program(program, planes, Ns_are_neutral(), kept);
    return kept;
  }

  void check(const filter_case& c, yardstick by) {
    const alignment_program program = make_alignment_program(c.settings.bound(c.L));
    if (program.is_empty()) return;
    check_filter(
        c, by, [&](const filter_case& any) { return keep(any, program); }, counts);
  }
};

TEST_F(AlignmentFilter, KeepsWhatCanBeAcceptedUnderManySettings) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(1500) && !HasFailure(); ++round) {
    const int L = random.number(1, random.coin() ? 10 : 30);
    const candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    check({settings, static_cast<unsigned>(L), sequences.make(sequences.length(), L, T)},
          yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.candidates, tried(100000U));
  EXPECT_GT(counts.wanted, tried(10000U));
}

TEST_F(AlignmentFilter, KeepsWhatTheBoundAsksForInLongRecords) {
  CRandomDna random(2);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(60) && !HasFailure(); ++round) {
    const int L = random.number(1, 12);
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.mismatch_score = std::min(settings.mismatch_score, -4);
    settings.indel_score = std::min(settings.indel_score, -4);
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    const int length = 512 * random.number(7, 33) + random.number(-1, 1);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, T)}, yardstick::bound);
  }
  EXPECT_GT(counts.candidates, tried(100000U));
  EXPECT_GT(counts.wanted, tried(10000U));
}

// Paths go around short units several times, by insertions and by deletions.
TEST_F(AlignmentFilter, KeepsWhatCanBeAcceptedOfShortUnitsWhereEditsAreCheap) {
  CRandomDna random(6);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(600) && !HasFailure(); ++round) {
    const int L = random.number(1, 5);
    candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(L));
    settings.mismatch_score = random.number(-5, -2);
    settings.indel_score = random.number(-4, -2);
    settings.min_score = random.number(4, 25);
    settings.put_in_force();
    const int T = CSearchController::minScores[L];
    check({settings, static_cast<unsigned>(L), sequences.make(sequences.length(), L, T)},
          yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.candidates, tried(30000U));
  EXPECT_GT(counts.wanted, tried(3000U));
}

TEST_F(AlignmentFilter, KeepsWhatCanBeAcceptedInRecordsOfEveryLength) {
  CRandomDna random(3);
  CCandidateSequences sequences(random);
  for (int length = 0; length <= 700 && !HasFailure(); ++length) {
    candidate_settings settings;
    settings.put_in_force();
    const int L = random.number(1, 10);
    check({settings, static_cast<unsigned>(L), sequences.make(length, L, 6)}, yardstick::bound_and_extension);
  }
  EXPECT_GT(counts.wanted, 1000U);
}

// Three symbols a stretch: runs begin and end at every offset to words, vectors and stretches.
TEST_F(AlignmentFilter, KeepsWhatCanBeAcceptedAroundNsAtEveryOffset) {
  CRandomDna random(4);
  CCandidateSequences sequences(random);
  for (std::size_t offset = 0; offset <= 520 && !HasFailure(); ++offset) {
    candidate_settings settings;
    settings.Ns_are_missense = random.number(0, 2) == 0;
    settings.put_in_force();
    const int L = random.number(1, 8);
    std::string symbols;
    while (symbols.size() < 1100) symbols += sequences.array_of(L);
    symbols.resize(1100);
    CCandidateSequences::put_Ns(symbols, offset, random.number(1, 4));
    CCandidateSequences::put_Ns(symbols, symbols.size() - offset - 4, random.number(1, 4));
    check({settings, static_cast<unsigned>(L), symbols}, yardstick::bound);
  }
  EXPECT_GT(counts.wanted, 10000U);
}

TEST_F(AlignmentFilter, DropsMostOfARandomSequence) {
  CRandomDna random(5);
  candidate_settings settings;
  settings.put_in_force();
  for (unsigned L = 1; L <= 10; ++L) {
    counts = {};
    check({settings, L, random.sequence("ACGT", 20000)}, yardstick::bound);
    EXPECT_LT(counts.share_of_unwanted_kept(), 0.02) << L;
  }
}

TEST(AlignmentProgram, IsNotMadeWhereItWouldKeepEverything) {
  EXPECT_TRUE(make_alignment_program({3, 5, 5, 3, 1}).is_empty());
  EXPECT_TRUE(make_alignment_program({3, 5, 5, 3, -7}).is_empty());
  EXPECT_TRUE(make_alignment_program({60, 2, 2, 60, 60}).is_empty());
}

// The number of slots that the planes of a row take.
unsigned width_of(const alignment_program::row& row) {
  std::set<alignment_program::slot> written;
  for (const auto& op : row.compares) written.insert(op.matches);
  for (const auto& op : row.runs) written.insert(op.to);
  for (const auto& op : row.forks) written.insert(op.to);
  for (const auto& op : row.joins) written.insert(op.to);
  return written.empty() ? 0 : *written.rbegin() - *written.begin() + 1U;
}

TEST(AlignmentProgram, ComparesASymbolWithEachOfTheUnitOnce) {
  for (unsigned L = 1; L <= 8; ++L) {
    const alignment_program program = make_alignment_program({L, 3, 3, static_cast<int>(L), 12});
    ASSERT_FALSE(program.is_empty()) << L;
    std::size_t most = 0;
    for (const auto& row : program.rows) most = std::max(most, row.compares.size());
    EXPECT_EQ(most, L);
  }
}

// Rows alternate between two halves of 400 slots.
TEST(AlignmentProgram, HasRowsThatFitTheirSlots) {
  for (const alignment_bound& wide : {alignment_bound{10, 14, 10, 10, 100}, alignment_bound{6, 10, 6, 6, 60},
                                      alignment_bound{1, 7, 6, 1, 60}, alignment_bound{3, 4, 3, 3, 25}}) {
    const alignment_program program = make_alignment_program(wide);
    ASSERT_FALSE(program.is_empty()) << wide.L;
    for (const auto& row : program.rows) ASSERT_LE(width_of(row), 400U) << wide.L;
  }
}

}  // namespace
