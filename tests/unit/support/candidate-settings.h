#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "CSearchController.h"
#include "alignment-program.h"
#include "global-types-and-parameters.h"
#include "random-dna.h"
#include "test-record.h"

// What the acceptance of a candidate depends on, for unit lengths up to `longest`.
struct candidate_settings {
  unsigned longest = 10;
  int mismatch_score = -5;
  int indel_score = -5;
  int prefer_longer = 1;
  int Ns_in_a_row = 3;
  bool Ns_are_missense = false;
  int recursion_depth = 5;
  int score_reduction = unlimited_scorereduction;
  int min_score = 6;
  int min_score_a = 0;
  float min_score_b = 1;

  // Sets the parameters, and the thresholds of the searches.
  void put_in_force() const {
    global_max_unit_length = longest;
    global_mismatch_score = mismatch_score;
    global_indel_score = indel_score;
    global_prefer_longer_repeat = prefer_longer;
    global_Ns_allowed_in_a_row = Ns_in_a_row;
    global_treat_Ns_as_missense = Ns_are_missense;
    global_maximum_recursion_depth = recursion_depth;
    global_maximum_scorereduction = score_reduction;
    global_min_score = min_score;
    global_min_score_a = min_score_a;
    global_min_score_bx = min_score_b;
    CSearchController::reset_minimum_arrays();
    CTestRecord none("");
    const CSearchController sets_thresholds(1, none);
  }

  // The bound of the unit length, once these are in force.
  alignment_bound bound(unsigned L) const {
    return {L, penalty(mismatch_score), penalty(indel_score), static_cast<int>(L) + prefer_longer - 1,
            CSearchController::minScores[L]};
  }

  // No score can pay for a penalty of a thousand million.
  static int penalty(int score) { return -std::max(score, -1000000000); }

  std::string text() const {
    std::ostringstream words;
    words << "-U " << longest << " -m " << mismatch_score << " -g " << indel_score
          << (prefer_longer != 0 ? "" : " --preferShorterRepeats") << " -N " << Ns_in_a_row
          << (Ns_are_missense ? " --NsAsMissense" : "") << " -r " << recursion_depth << " -R " << score_reduction
          << " -s " << min_score << " --minScore_a " << min_score_a << " --minScore_b " << min_score_b;
    return words.str();
  }
};

inline candidate_settings random_candidate_settings(CRandomDna& random, unsigned longest) {
  const std::vector<int> scores{-2, -3, -4, -5, -5, -5, -6, -7, -9, -12};
  const std::vector<int> reductions{
      0, 3, 8, 15, unlimited_scorereduction, unlimited_scorereduction, unlimited_scorereduction};
  candidate_settings s;
  s.longest = longest;
  s.mismatch_score = random.one_of(scores);
  s.indel_score = random.coin() ? s.mismatch_score : random.one_of(scores);
  s.prefer_longer = random.number(0, 1);
  s.Ns_in_a_row = random.number(0, 4);
  s.Ns_are_missense = random.number(0, 3) == 0;
  // What is left out here only restricts the paths, but costs the plain recursion dearly.
  s.recursion_depth = random.number(1, longest <= 8 ? 5 : longest <= 20 ? 4 : 3);
  s.score_reduction = random.one_of(reductions);
  s.min_score = random.number(1, 40);
  if (random.coin()) return s;
  s.min_score = random.number(1, 8);
  s.min_score_a = random.number(-4, 4);
  s.min_score_b = random.one_of(std::vector<float>{0.0F, 0.25F, 0.5F, 1.0F, 1.0F, 1.0F, 1.5F, 2.0F});
  return s;
}
