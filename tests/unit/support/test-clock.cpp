#include "test-clock.h"

namespace test_clock {

constinit std::time_t now = start;
constinit std::time_t step_each_look = 0;

}  // namespace test_clock

// Takes the place of the C library's function in the whole test program, static initialisation included.
extern "C" std::time_t time(std::time_t* result) noexcept {
  const std::time_t seen = test_clock::now;
  test_clock::now += test_clock::step_each_look;
  if (result != nullptr) *result = seen;
  return seen;
}
