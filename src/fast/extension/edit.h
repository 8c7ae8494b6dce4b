#ifndef QUARVO_FAST_EDIT_H
#define QUARVO_FAST_EDIT_H

// The edits that an extension may make at a mismatch, in the order in which they are preferred at equal values.
enum class edit : unsigned char { mismatch, insertion, deletion, none };

// What a look-ahead finds at a mismatch.
struct edit_outlook {
  edit chosen;  // `none` when no edit is admissible
  int highest;  // the score that it leads to; of no meaning without an edit
  bool is_cut;  // whether another edit is admissible behind the last that the look-ahead may make
};

#endif
