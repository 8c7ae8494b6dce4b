#pragma once

#include <cstdint>
#include <vector>

// How many repeats of each unit length have a value in each bin. Unit lengths above `longest` count as longest + 1.
class CDistribution {
 public:
  static constexpr int longest = 1000;

  struct cell {
    int unit_length;
    int bin;
    std::int64_t repeats;  // at least 1
  };

  // Bin i holds the values from edges[i], inclusive, to edges[i + 1], exclusive; the last has no upper end, the first
  // also takes what lies below it. Edges ascend.
  explicit CDistribution(std::vector<int> its_edges) : bin_edges(std::move(its_edges)) {}

  // A value that is no number is counted apart.
  void add(int unit_length, double value);

  const std::vector<int>& edges() const { return bin_edges; }
  std::int64_t undefined() const { return without_value; }
  // The cells that are not empty, by unit length, then bin.
  std::vector<cell> cells() const;

 private:
  std::vector<int> bin_edges;
  std::vector<std::vector<std::int64_t>> counts;  // by unit length, then bin; empty where nothing was added
  std::int64_t without_value = 0;
};

// Edges for lengths and copy numbers: every whole number up to 100, then steps of about a tenth.
std::vector<int> edges_of_sizes();
// Edges for percentages: every whole number. The last bin holds 100 alone.
std::vector<int> edges_of_percentages();
