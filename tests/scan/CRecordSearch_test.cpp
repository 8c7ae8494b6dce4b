// The search of a record in stretches finds what one search of it finds, wherever the borders lie.

#include "CRecordSearch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "global-types-and-parameters.h"
#include "stretches.h"
#include "support/random-dna.h"
#include "support/repeats.h"
#include "support/sanitizers.h"
#include "support/test-record.h"

namespace {

texts described(const std::list<Csat*>& repeats, const CTestRecord& record) {
  texts all;
  for (const Csat* sat : repeats) all.push_back(describe(*sat, record) + " " + edits_of(*sat, record));
  return all;
}

texts searched_as_a_whole(CTestRecord& record, const search_settings& settings, int mode) {
  Csat_garbagecollector pool;
  CFastShortcuts shortcuts;
  search_workspace workspace{pool, &shortcuts};
  CSearchController controller(1, record, settings, workspace);
  if (mode == search_mode_exact) {
    controller.exact_search_2();
    return described(controller.result_list.records, record);
  }
  if (mode == search_mode_extend_exact) controller.search_exact_and_extend_to_imperfect_repeats();
  if (mode == search_mode_imperfect) controller.complete_imperfect_search(nullptr);
  return described(controller.work_list.records, record);
}

texts searched_in_stretches(CTestRecord& record, const search_settings& settings, int mode, unsigned stretch,
                            unsigned overlap) {
  CSearchers searchers;
  CRecordSearch search({settings, mode, equal_stretches(record.symbols.length, stretch), overlap}, searchers);
  Csat_garbagecollector pool;
  CsatContainer found(pool);
  const repeat_list repeats = search.search(record);
  found.records.assign(repeats.begin(), repeats.end());
  return described(found.records, record);
}

// Random sequence full of repeats of edited units, some long, and runs of N's.
std::string sequence_with_repeats(CRandomDna& random, int repeats) {
  std::string symbols;
  for (int i = 0; i < repeats; ++i) {
    symbols += random.sequence(random.coin() ? "ACGT" : "AAAT", random.number(0, 60));
    const int longest = random.number(0, 5) == 0 ? 90 : 12;
    std::string repeat = repeated(random.sequence("ACGT", random.number(1, longest)), random.number(2, 14));
    for (int edits = random.number(0, 6); edits > 0; --edits) {
      repeat[static_cast<std::size_t>(random.number(0, static_cast<int>(repeat.size()) - 1))] =
          "ACGTN"[random.number(0, 4)];
    }
    symbols += repeat;
    if (random.number(0, 20) == 0) symbols += std::string(static_cast<std::size_t>(random.number(1, 300)), 'N');
  }
  return symbols;
}

search_settings random_settings(CRandomDna& random) {
  init_param();
  global_search_mode = random.number(0, 2);
  global_min_unit_length = static_cast<unsigned>(random.one_of(std::vector<int>{1, 1, 2, 5}));
  global_max_unit_length = static_cast<unsigned>(random.one_of(std::vector<int>{6, 10, 25, 40, 100}));
  global_min_score = random.number(4, 14);
  if (random.coin()) global_min_score_bx = 0;
  global_mismatch_score = random.number(-6, -3);
  global_indel_score = random.number(-6, -3);
  global_maximum_recursion_depth = random.number(2, 5);
  if (random.coin()) global_maximum_scorereduction = random.number(5, 20);
  if (random.number(0, 3) == 0) global_min_perfection = static_cast<float>(random.number(80, 100));
  global_Ns_allowed_in_a_row = random.number(0, 4);
  global_treat_Ns_as_missense = random.coin();
  global_prefer_longer_repeat = random.number(0, 1);
  global_remove_mostly_hidden = random.coin();
  CSearchController::reset_minimum_arrays();
  CSearchController::make_minimum_arrays();
  return current_search_settings();
}

TEST(RecordSearch, FindsTheSameInStretches) {
  CRandomDna random(7);
  std::size_t found = 0;
  for (int round = 0; round < tried(40); ++round) {
    const search_settings settings = random_settings(random);
    CTestRecord record(sequence_with_repeats(random, random.number(1, 60)));
    const texts whole = searched_as_a_whole(record, settings, global_search_mode);
    found += whole.size();
    const auto stretch = static_cast<unsigned>(random.number(20, 400));
    const auto overlap = static_cast<unsigned>(random.number(1, 60));
    ASSERT_EQ(searched_in_stretches(record, settings, global_search_mode, stretch, overlap), whole)
        << "round " << round << ", mode " << global_search_mode << ", stretches of " << stretch;
  }
  EXPECT_GT(found, tried(2000U));
}

// A border inside one long repeat, which no overlap can step over.
TEST(RecordSearch, SearchesALongRepeatAsOne) {
  CRandomDna random(1);
  random_settings(random);
  init_param();
  CSearchController::reset_minimum_arrays();
  CSearchController::make_minimum_arrays();
  const search_settings settings = current_search_settings();
  CTestRecord record(random.sequence("ACGT", 3000) + repeated("ACGGT", 800) + random.sequence("ACGT", 3000));
  for (const int mode : {search_mode_exact, search_mode_extend_exact, search_mode_imperfect}) {
    EXPECT_EQ(searched_in_stretches(record, settings, mode, 500, 50), searched_as_a_whole(record, settings, mode));
  }
}

}  // namespace
