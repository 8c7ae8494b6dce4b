#pragma once

#include <cstdint>
#include <vector>

// Where along one sequence its repeats lie: bins of equal width from position 1 on. The width is a power of two and
// doubles whenever the bins would become more than allowed, so memory is bounded however long the sequence is.
class CTrack {
 public:
  static constexpr int narrowest = 32;  // symbols

  struct bin {
    std::uint32_t starts = 0;   // repeats that start here
    std::uint32_t covered = 0;  // symbols that lie in at least one repeat
  };

  // Adds a repeat. Positions are 1-based and inclusive; what lies before first_new is covered already.
  void add(int start, int first_new, int end, std::size_t most_bins);

  // Merges neighbours until there are at most that many bins, at least one.
  void coarsen(std::size_t most_bins);

  std::int64_t width() const { return bin_width; }
  const std::vector<bin>& bins() const { return all; }

 private:
  std::int64_t bin_width = narrowest;
  std::vector<bin> all;

  void widen();
  bin& bin_at(int position) { return all[static_cast<std::size_t>((position - 1) / bin_width)]; }
};
