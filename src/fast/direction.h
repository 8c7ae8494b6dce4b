#ifndef QUARVO_FAST_DIRECTION_H
#define QUARVO_FAST_DIRECTION_H

// The two directions of an extension, so that each step of it is written once.
//
// A position lies between two symbols. `ahead` is the symbol that an extension examines next at a position, and `end`
// the position with nothing ahead: one past the last symbol to the right, the first symbol to the left. Units are
// ranges [begin, end) with cyclic cursors.

struct rightwards {
  static char ahead(const char* position) { return *position; }
  static const char* step(const char* position) { return position + 1; }
  static const char* unit_step(const char* cursor, const char* unit_begin, const char* unit_end) {
    return cursor + 1 == unit_end ? unit_begin : cursor + 1;
  }
};

struct leftwards {
  static char ahead(const char* position) { return position[-1]; }
  static const char* step(const char* position) { return position - 1; }
  static const char* unit_step(const char* cursor, const char* unit_begin, const char* unit_end) {
    return cursor == unit_begin ? unit_end - 1 : cursor - 1;
  }
};

#endif
