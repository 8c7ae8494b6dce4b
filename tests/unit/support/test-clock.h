#pragma once

#include <ctime>

// The calendar time in the test program: it stands still at `start` unless a test moves it, so that no test depends on
// the time of day and none waits.
namespace test_clock {

inline constexpr std::time_t start = 1000000000;

extern std::time_t now;             // what time() returns
extern std::time_t step_each_look;  // added to `now` after every call of time()

// Puts the clock back to its start at the end of a test.
class CReset {
 public:
  CReset() = default;
  CReset(const CReset&) = delete;
  CReset& operator=(const CReset&) = delete;
  ~CReset() {
    now = start;
    step_each_look = 0;
  }
};

}  // namespace test_clock
