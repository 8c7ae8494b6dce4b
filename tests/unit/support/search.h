#pragma once

#include <gtest/gtest.h>

#include <string>

#include "CSearchController.h"
#include "default-parameters.h"
#include "fast-search.h"
#include "global-types-and-parameters.h"
#include "quarvo-messages.h"
#include "repeats.h"
#include "test-clock.h"
#include "test-record.h"

// One search over one sequence with the parameters in force, before overlap removal, and what it left.
class CSearched {
 public:
  CTestRecord record;

 private:
  CFastSearch fast;

 public:
  CSearchController& controller;
  std::string progress;  // what the search wrote to standard error

  CSearched(int mode, const std::string& symbols)
      : record(symbols),
        fast(with_new_thresholds(record), {}, 7, progress_lines(7, record.short_name.c_str())),
        controller(fast.controller) {
    ::testing::internal::CaptureStderr();
    if (mode == search_mode_exact) controller.exact_search_2();
    if (mode == search_mode_extend_exact) controller.search_exact_and_extend_to_imperfect_repeats();
    if (mode == search_mode_imperfect) controller.complete_imperfect_search(stdout);
    progress = ::testing::internal::GetCapturedStderr();
  }

  texts results() const { return describe(controller.result_list.records, record); }
  texts work() const { return describe(controller.work_list.records, record); }

 private:
  static CSequence_Mol& with_new_thresholds(CTestRecord& record) {
    CSearchController::reset_minimum_arrays();
    return record;
  }
};

// Makes a progress line due at the next look at the clock.
inline void let_a_minute_pass() {
  update_report_time();
  test_clock::now += 60;
}
