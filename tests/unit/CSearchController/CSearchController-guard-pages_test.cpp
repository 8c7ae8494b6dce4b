// No search reads outside the symbols of a record, with any vector code: they lie directly against unreadable pages,
// which needs no sanitizer.

#include <gtest/gtest.h>

#include <string>

#include "support/candidate-sequences.h"
#include "support/candidate-settings.h"
#include "support/each-target.h"
#include "support/fast-search.h"
#include "support/guarded-record.h"
#include "support/sanitizers.h"
#include "support/search.h"

namespace {

// What the search finds in a record, whose symbols must be the only thing that it reads of it.
texts search(int mode, CSequence_Mol& record, const shortcut_switches& switches) {
  CFastSearch fast(record, switches);
  CSearchController& controller = fast.controller;
  ::testing::internal::CaptureStderr();
  if (mode == search_mode_exact) controller.exact_search_2();
  if (mode == search_mode_extend_exact) controller.search_exact_and_extend_to_imperfect_repeats();
  if (mode == search_mode_imperfect) controller.complete_imperfect_search(stdout);
  ::testing::internal::GetCapturedStderr();
  return describe(mode == search_mode_exact ? controller.result_list.records : controller.work_list.records, record);
}

class GuardPages : public ParameterTest {
 protected:
  std::size_t found = 0;

  void check(const std::string& symbols, const shortcut_switches& switches = {}) {
    for (const int mode : {search_mode_exact, search_mode_extend_exact, search_mode_imperfect}) {
      CTestRecord plain(symbols);
      const texts expected = search(mode, plain, switches);
      found += expected.size();
      for (const guarded_side side : {guarded_side::begin, guarded_side::end}) {
        CGuardedRecord guarded(symbols, side);
        ASSERT_EQ(search(mode, guarded, switches), expected) << symbols;
      }
    }
  }

 private:
  test_clock::CReset reset;
};

TEST_F(GuardPages, StopNoSearchOfRecordsOfManyLengths) {
  on_each_target([this] {
    CRandomDna random(1);
    CCandidateSequences sequences(random);
    candidate_settings().put_in_force();
    for (int length = 0; length <= tried(1100); length += length < 140 ? 1 : random.number(1, 30)) {
      check(sequences.make(length, random.number(1, 10), 6));
    }
  });
  EXPECT_GT(found, tried(1000U));
}

TEST_F(GuardPages, StopNoSearchAtTheBordersOfBlocks) {
  on_each_target([this] {
    CRandomDna random(2);
    CCandidateSequences sequences(random);
    candidate_settings().put_in_force();
    for (const int border : {64, 128, 256, 384, 512, 1024, 1536, 4096, 8192}) {
      for (const int offset : {-1, 0, 1}) check(sequences.make(border + offset, random.number(1, 10), 6));
    }
  });
  EXPECT_GT(found, 1000U);
}

TEST_F(GuardPages, StopNoSearchForLongUnits) {
  on_each_target([this] {
    CRandomDna random(3);
    CCandidateSequences sequences(random);
    candidate_settings settings;
    settings.longest = 40;
    settings.put_in_force();
    for (int length = 1; length <= 700; length += random.number(1, 120)) {
      check(sequences.make(length, random.number(10, 40), 20));
    }
    settings.longest = 171;
    settings.put_in_force();
    global_min_unit_length = 171;
    check(symbols_of_data_file("human_alpha_satellite.fa"));
    global_min_unit_length = 1;
  });
  EXPECT_GT(found, 100U);
}

// Without the sieves every candidate is extended, the ones at the ends of the record too.
TEST_F(GuardPages, StopNoSearchUnderManySettings) {
  CRandomDna random(4);
  CCandidateSequences sequences(random);
  for (int round = 0; round < tried(150); ++round) {
    const candidate_settings settings = random_candidate_settings(random, static_cast<unsigned>(random.number(1, 25)));
    settings.put_in_force();
    shortcut_switches switches;
    switches.candidates = random.coin();
    check(sequences.make(random.number(1, 400), random.number(1, 25), 10), switches);
  }
  EXPECT_GT(found, tried(1000U));
}

// The guards themselves work.
TEST(GuardedRecordDeathTest, EndsTheProcessWhereItIsReadBeyond) {
  const CGuardedRecord at_begin("ACGT", guarded_side::begin);
  const CGuardedRecord at_end("ACGT", guarded_side::end);
  const auto read = [](const char* p) { return *static_cast<const volatile char*>(p); };
  EXPECT_EQ(read(at_begin.symbols.buffer), 'A');
  EXPECT_EQ(read(at_end.symbols.buffer + 3), 'T');
  EXPECT_DEATH((void)read(at_begin.symbols.buffer - 1), "");
  EXPECT_DEATH((void)read(at_end.symbols.buffer + 4), "");
}

}  // namespace
