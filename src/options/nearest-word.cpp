#include "nearest-word.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace {

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// The edit distance, a row of its table at a time.
std::size_t distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string nearest_word(const std::string& word, const std::vector<std::string>& words) {
  std::string nearest;
  std::size_t least = std::min(std::max<std::size_t>(2, word.size() / 3) + 1, word.size());
  for (const std::string& other : words) {
    const std::size_t its_distance = distance(word, other);
    if (its_distance >= least) continue;
    least = its_distance;
    nearest = other;
  }
  return nearest;
}
