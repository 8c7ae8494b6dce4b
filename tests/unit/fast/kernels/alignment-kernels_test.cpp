// The compiled alignment programs: which there are, and that each keeps what the interpreter keeps.

#include "alignment-kernels.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <string>

#include "alignment-filter.h"
#include "support/candidate-sequences.h"
#include "support/default-parameters.h"
#include "support/each-target.h"
#include "support/filter-check.h"
#include "support/test-record.h"

namespace {

class AlignmentKernels : public ParameterTest {
 protected:
  std::size_t kept = 0;     // of all records, by the interpreter
  std::size_t dropped = 0;  // of their symbols

  // Of the kernel and of the interpreter, with neutral N's.
  void expect_same_kept(const alignment_kernel& kernel, const std::string& symbols) {
    const alignment_program program = make_alignment_program(kernel.bound);
    ASSERT_EQ(kernel.reach, program.reach);
    CBitPlanes planes;
    planes.build(symbols.data(), symbols.size(), static_cast<std::size_t>(program.reach));
    CPositionSet interpreted(symbols.size());
    run_alignment_program(program, planes, true, interpreted);
    kept += count_of(interpreted);
    dropped += symbols.size() - count_of(interpreted);
    on_each_target([&] {
      CPositionSet compiled(symbols.size());
      kernel.run(planes, compiled);
      EXPECT_TRUE(compiled == interpreted) << "unit length " << kernel.bound.L << "\n" << symbols;
    });
  }

  template <typename Make>
  void check_all(Make make) {
    for (const alignment_kernel& kernel : alignment_kernels()) {
      if (HasFailure()) return;
      expect_same_kept(kernel, make(static_cast<int>(kernel.bound.L), kernel.bound.T));
    }
  }
};

TEST_F(AlignmentKernels, AreThoseOfTheDefaultScoring) {
  ASSERT_GE(alignment_kernels().size(), 4U);
  set_unit_lengths(1, static_cast<unsigned>(alignment_kernels().size()));
  CSearchController::reset_minimum_arrays();
  CTestRecord none("");
  const CSearchController sets_thresholds(1, none);
  for (const alignment_kernel& kernel : alignment_kernels()) {
    const unsigned L = kernel.bound.L;
    const auto T = CSearchController::minScores[L];
    const alignment_bound wanted{L, -global_mismatch_score, -global_indel_score,
                                 static_cast<int>(L) + global_prefer_longer_repeat - 1, T};
    EXPECT_EQ(find_alignment_kernel(wanted), &kernel) << L;
  }
}

TEST_F(AlignmentKernels, AreNotForAnyOtherScoring) {
  const alignment_bound bound = alignment_kernels().back().bound;
  for (int alignment_bound::*part : {&alignment_bound::mismatch_penalty, &alignment_bound::indel_penalty,
                                     &alignment_bound::b, &alignment_bound::T}) {
    alignment_bound other = bound;
    ++(other.*part);
    EXPECT_EQ(find_alignment_kernel(other), nullptr);
  }
}

TEST_F(AlignmentKernels, KeepWhatTheInterpreterKeepsOfRepeats) {
  CRandomDna random(1);
  CCandidateSequences sequences(random);
  for (int round = 0; round < 10; ++round) {
    check_all([&](int L, int T) { return sequences.make(sequences.length(), L, T); });
  }
  EXPECT_GT(kept, 5000U);
  EXPECT_GT(dropped, 5000U);
}

TEST_F(AlignmentKernels, KeepWhatTheInterpreterKeepsOfRandomSequence) {
  CRandomDna random(2);
  check_all([&](int /*L*/, int /*T*/) { return random.sequence("ACGT", 30000); });
  EXPECT_GT(kept, 100U);
  EXPECT_GT(dropped, 100000U);
}

TEST_F(AlignmentKernels, KeepWhatTheInterpreterKeepsInRecordsOfEveryLength) {
  CRandomDna random(3);
  CCandidateSequences sequences(random);
  for (int length = 0; length <= 1100; length += random.number(1, 120)) {
    check_all([&](int L, int T) { return sequences.make(length, L, T); });
  }
  EXPECT_GT(kept, 5000U);
}

TEST_F(AlignmentKernels, KeepWhatTheInterpreterKeepsAroundNs) {
  CRandomDna random(4);
  CCandidateSequences sequences(random);
  for (std::size_t offset = 0; offset <= 520; offset += 40) {
    check_all([&](int L, int /*T*/) {
      std::string symbols;
      while (symbols.size() < 1100) symbols += sequences.array_of(L);
      symbols.resize(1100);
      CCandidateSequences::put_Ns(symbols, offset, random.number(1, 4));
      return symbols;
    });
  }
  EXPECT_GT(kept, 5000U);
}

}  // namespace
