#include "reference-cost.h"

#include <algorithm>
#include <cmath>

namespace differential {

namespace {

// Beyond this recursion depth the scores of a sequence decide how long a path of the look-ahead can be.
constexpr int deepest_ordinary_recursion = 7;
constexpr std::size_t most_symbols_in_deep_recursion = 70;

// Points above zero at which a path begins inside a repeat.
constexpr double ordinary_climb = 12;
constexpr double climb_in_deep_recursion = 35;

bool has_deep_recursion(const search_settings& settings) { return settings.recursion > deepest_ordinary_recursion; }

// The number of edits that a path of the look-ahead can hold before the score bound cuts it.
double edits_of_a_path(const search_settings& settings, double unit_length, texture repeats) {
  const double penalty = -std::max(settings.mismatch, settings.indel);
  const double climb = has_deep_recursion(settings) ? climb_in_deep_recursion : ordinary_climb;
  const double gained = repeats == texture::dense ? climb + penalty : 3;
  const double fall = std::min(unit_length + gained, std::max(0.0, static_cast<double>(settings.score_reduction)) + 3);
  return std::min(static_cast<double>(settings.recursion), fall / penalty);
}

// Paths of the look-ahead that a start position costs at one unit length.
double cost_of_a_position(const search_settings& settings, int unit_length, texture repeats) {
  if (settings.mode == "exact") return 3;
  const double edits = edits_of_a_path(settings, unit_length, repeats);
  const double points = 2 + 2 * static_cast<double>(unit_length) / -std::max(settings.mismatch, settings.indel);
  const double both_ways = 2 * points * std::pow(2.7, edits) + 3;
  return settings.mode == "imperfect" ? both_ways : 3 + both_ways / 5;
}

// While the symbols have room for more unit lengths, each further symbol raises the cost of all positions.
std::size_t symbols_at_cost(const search_settings& settings, texture repeats, double cost) {
  std::size_t symbols = 1;
  double of_a_position = 1;
  for (; static_cast<int>(symbols) <= settings.max_unit; ++symbols) {
    const int length = static_cast<int>(symbols);
    if (length >= settings.min_unit) of_a_position += cost_of_a_position(settings, length, repeats);
    if (of_a_position * static_cast<double>(symbols) > cost) return symbols;
  }
  return static_cast<std::size_t>(cost / of_a_position);
}

}  // namespace

std::size_t affordable_symbols(const search_settings& settings, texture repeats, double cost) {
  if (!has_deep_recursion(settings)) return symbols_at_cost(settings, repeats, cost);
  return std::min(most_symbols_in_deep_recursion, symbols_at_cost(settings, texture::dense, cost));
}

std::size_t sufficient_symbols(const search_settings& settings) {
  const int longest = std::max(settings.min_unit, std::min(settings.max_unit, 1000));
  return static_cast<std::size_t>(longest) * 3 + 20;
}

}  // namespace differential
