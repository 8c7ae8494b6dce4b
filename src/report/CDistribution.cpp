#include "CDistribution.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

void CDistribution::add(int unit_length, double value) {
  if (std::isnan(value)) {
    ++without_value;
    return;
  }
  const auto row = static_cast<std::size_t>(std::min(unit_length, longest + 1));
  if (row >= counts.size()) counts.resize(row + 1);
  if (counts[row].empty()) counts[row].resize(bin_edges.size());
  const auto above = std::upper_bound(bin_edges.begin() + 1, bin_edges.end(), value);
  ++counts[row][static_cast<std::size_t>(above - bin_edges.begin()) - 1];
}

std::vector<CDistribution::cell> CDistribution::cells() const {
  std::vector<cell> found;
  for (std::size_t row = 0; row < counts.size(); ++row) {
    for (std::size_t bin = 0; bin < counts[row].size(); ++bin) {
      if (counts[row][bin] > 0) found.push_back({static_cast<int>(row), static_cast<int>(bin), counts[row][bin]});
    }
  }
  return found;
}

std::vector<int> edges_of_sizes() {
  constexpr std::array tenths{10, 12, 14, 16, 18, 20, 25, 30, 35, 40, 45, 50, 60, 70, 80, 90};
  std::vector<int> edges(100);
  std::iota(edges.begin(), edges.end(), 0);
  for (int factor = 10; factor <= 10000000; factor *= 10) {
    for (const int tenth : tenths) edges.push_back(tenth * factor);
  }
  return edges;
}

std::vector<int> edges_of_percentages() {
  std::vector<int> edges(101);
  std::iota(edges.begin(), edges.end(), 0);
  return edges;
}
