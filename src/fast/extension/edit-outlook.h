#pragma once

#include "edit.h"

// What a look-ahead finds at a mismatch.
struct edit_outlook {
  edit chosen;  // `none` when no edit is admissible
  int highest;  // the score that it leads to; of no meaning without an edit
  bool is_cut;  // whether another edit is admissible after the last that the look-ahead may make
};
