#include "look-ahead.h"

#include "global-types-and-parameters.h"

look_ahead_rules current_look_ahead_rules() {
  return {global_mismatch_score,          global_indel_score,
          global_maximum_scorereduction,  global_prefer_longer_repeat,
          global_maximum_recursion_depth, Ns_are_neutral()};
}
