// Searches of different records with different settings, in threads at once, find what each finds alone.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "CFastShortcuts.h"
#include "CSearchController.h"
#include "global-types-and-parameters.h"
#include "support/random-dna.h"
#include "support/repeats.h"
#include "support/test-record.h"

namespace {

struct search_case {
  std::string symbols;
  search_settings settings;
  int mode;
};

// A record, its pool and its shortcuts are the thread's own.
texts search(const search_case& searched) {
  CTestRecord record(searched.symbols);
  Csat_garbagecollector pool;
  CFastShortcuts shortcuts;
  search_workspace workspace{pool, &shortcuts};
  CSearchController controller(1, record, searched.settings, workspace);
  if (searched.mode == search_mode_exact) {
    controller.exact_search_2();
    return describe(controller.result_list.records, record);
  }
  if (searched.mode == search_mode_extend_exact) controller.search_exact_and_extend_to_imperfect_repeats();
  if (searched.mode == search_mode_imperfect) controller.complete_imperfect_search(stdout);
  if (searched.settings.removes_mostly_hidden) CSearchController::remove_mostly_hidden(controller.work_list);
  return describe(controller.work_list.records, record);
}

// Random sequence with repeats of edited units in it.
std::string sequence_with_repeats(CRandomDna& random, int repeats) {
  std::string symbols;
  for (int i = 0; i < repeats; ++i) {
    symbols += random.sequence("ACGT", random.number(0, 200));
    std::string repeat = repeated(random.sequence("ACGT", random.number(1, 30)), random.number(3, 12));
    for (int edits = random.number(0, 6); edits > 0; --edits) {
      repeat[static_cast<std::size_t>(random.number(0, static_cast<int>(repeat.size()) - 1))] =
          "ACGTN"[random.number(0, 4)];
    }
    symbols += repeat;
  }
  return symbols;
}

search_case random_case(CRandomDna& random) {
  init_param();
  global_search_mode = random.number(0, 2);
  global_max_unit_length = static_cast<unsigned>(random.one_of(std::vector<int>{6, 10, 25, 40}));
  global_min_score = random.number(5, 14);
  global_mismatch_score = random.number(-6, -3);
  global_indel_score = random.number(-6, -3);
  global_maximum_recursion_depth = random.number(2, 6);
  if (random.coin()) global_maximum_scorereduction = random.number(5, 20);
  global_treat_Ns_as_missense = random.coin();
  global_prefer_longer_repeat = random.number(0, 1);
  global_remove_mostly_hidden = random.coin();
  CSearchController::reset_minimum_arrays();
  CSearchController::make_minimum_arrays();
  return {sequence_with_repeats(random, random.number(1, 12)), current_search_settings(), global_search_mode};
}

TEST(SearchesAtOnce, FindWhatEachFindsAlone) {
  CRandomDna random(1);
  std::size_t found = 0;
  for (int round = 0; round < 150; ++round) {
    const std::vector<search_case> cases{random_case(random), random_case(random)};
    std::vector<texts> alone;
    for (const search_case& one : cases) {
      alone.push_back(search(one));
      found += alone.back().size();
    }
    std::vector<texts> at_once(cases.size());
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < cases.size(); ++i) {
      threads.emplace_back([&, i] { at_once[i] = search(cases[i]); });
    }
    for (std::thread& thread : threads) thread.join();
    ASSERT_EQ(at_once, alone) << "round " << round;
  }
  EXPECT_GT(found, 1000U);
}

}  // namespace
