#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

// Keeps what scores highest of a long stream, in bounded memory. What is kept is always a prefix of the order by
// descending score and, where that is equal, by the order of the stream.
//
// An Item has the members score, order (its place in the stream) and bytes (what it costs to hold).
template <typename Item>
class CScoreCut {
 public:
  // At most twice that many bytes are held, and never less than the best of that many kept.
  explicit CScoreCut(std::size_t most_bytes) : limit(most_bytes) {}

  void add(Item item) {
    held += item.bytes;
    items.push_back(std::move(item));
    if (held > 2 * limit) cut_to(limit, [](const Item& kept) { return kept.bytes; });
  }

  // Keeps the longest prefix whose costs add up to at most `most`. The cost of each item is asked for once, in the
  // order of the prefix; the items are then in the order of the stream.
  template <typename Cost>
  void finish(std::size_t most, Cost cost) {
    cut_to(most, cost);
    if (!items.empty()) {
      lowest = items.back().score;
      const auto same = [this](const Item& item) { return item.score == lowest; };
      kept_of_lowest = std::count_if(items.begin(), items.end(), same);
    }
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.order < b.order; });
  }

  const std::vector<Item>& kept() const { return items; }
  std::int64_t left_out() const { return dropped; }
  // After finish(), unless nothing was kept: the lowest score kept, and how many of that score were kept.
  int lowest_score() const { return lowest; }
  std::int64_t kept_of_lowest_score() const { return kept_of_lowest; }

 private:
  std::size_t limit;
  std::size_t held = 0;
  std::vector<Item> items;
  std::int64_t dropped = 0;
  int lowest = 0;
  std::int64_t kept_of_lowest = 0;

  template <typename Cost>
  void cut_to(std::size_t most, Cost cost) {
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.score != b.score ? a.score > b.score : a.order < b.order; });
    std::size_t used = 0;
    std::size_t count = 0;
    held = 0;
    for (; count < items.size(); ++count) {
      used += cost(items[count]);
      if (used > most) break;
      held += items[count].bytes;
    }
    dropped += static_cast<std::int64_t>(items.size() - count);
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(count), items.end());
  }
};
