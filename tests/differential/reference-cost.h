// What a search costs the reference, at a guess, so that cases are as large as its plain recursion allows.
#pragma once

#include <cstddef>

#include "search-settings.h"

namespace differential {

// Look-ahead paths: about ten and a hundred milliseconds.
inline constexpr double ordinary_cost = 1e7;
inline constexpr double generous_cost = 1e8;

// How repeats lie in a sequence: one upon the other, or with plain stretches between them, as in genomes.
enum class texture { dense, sparse };

// How many symbols the reference searches at this cost.
std::size_t affordable_symbols(const search_settings& settings, texture repeats, double cost);

// How many symbols it takes for a repeat of the longest unit, with something around it.
std::size_t sufficient_symbols(const search_settings& settings);

}  // namespace differential
