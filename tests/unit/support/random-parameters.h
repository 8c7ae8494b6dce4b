#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "global-types-and-parameters.h"
#include "random-dna.h"

// Random settings of everything that the extension reads, with the given recursion depth.
inline void set_random_extension_parameters(CRandomDna& random, int depth) {
  constexpr int unlimited = unlimited_scorereduction;
  const std::vector<int> reductions{0, 1, 2, 4, 5, 6, 8, 11, 20, unlimited, unlimited, unlimited};
  global_maximum_recursion_depth = depth;
  global_maximum_scorereduction = random.one_of(reductions);
  global_mismatch_score = random.number(-5, -2);
  global_indel_score = random.number(-5, -2);
  global_prefer_longer_repeat = random.number(0, 1);
  global_Ns_allowed_in_a_row = random.number(0, 3);
  global_treat_Ns_as_missense = random.number(0, 4) == 0;
}

// Those settings as a text for a failure.
inline std::string extension_parameters() {
  std::ostringstream text;
  text << "depth " << global_maximum_recursion_depth << ", reduction " << global_maximum_scorereduction
       << ", penalties " << global_mismatch_score << ' ' << global_indel_score << ", P " << global_prefer_longer_repeat
       << ", N's " << global_Ns_allowed_in_a_row << (global_treat_Ns_as_missense ? " missense" : "");
  return text.str();
}
