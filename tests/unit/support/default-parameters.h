#pragma once

#include <gtest/gtest.h>

#include "CSearchController.h"
#include "global-types-and-parameters.h"

// Every parameter at its default while this lives and afterwards, and no thresholds left over from another test.
class CDefaultParameters {
 public:
  CDefaultParameters() { restore(); }
  ~CDefaultParameters() { restore(); }
  CDefaultParameters(const CDefaultParameters&) = delete;
  CDefaultParameters& operator=(const CDefaultParameters&) = delete;

 private:
  static void restore() {
    init_param();
    global_input_filename.clear();
    global_output_filename.clear();
    CSearchController::reset_minimum_arrays();
  }
};

// The base of tests that set parameters.
class ParameterTest : public ::testing::Test {
 private:
  CDefaultParameters defaults;
};

// Lets every repeat pass, so that the results show which candidates a search tried.
inline void accept_every_score() {
  global_min_score = 0;
  global_min_score_bx = 0.0F;
}

inline void set_unit_lengths(unsigned shortest, unsigned longest) {
  global_min_unit_length = shortest;
  global_max_unit_length = longest;
}
