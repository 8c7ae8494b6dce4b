#pragma once

// A place on the way of an extension: the position, the unit cursor and the score there.
struct extension_state {
  const char* s;
  int u;
  int score;
};
