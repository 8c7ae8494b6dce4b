#pragma once

#include <tbb/parallel_for.h>

#include <atomic>
#include <cstddef>

// Calls body(0), body(1), ... body(count - 1) by all threads, each begun after those before it.
template <typename Body>
void for_each_in_turn(std::size_t count, const Body& body) {
  std::atomic<std::size_t> next = 0;
  tbb::parallel_for(
      std::size_t{0}, count, [&](std::size_t) { body(next++); }, tbb::simple_partitioner());
}
