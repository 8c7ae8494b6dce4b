// What a search costs the reference, at a guess, so that cases are as large as its plain recursion allows.
#pragma once

#include <cstddef>

#include "search-settings.h"

namespace differential {

// Look-ahead paths: about ten and a hundred milliseconds.
inline constexpr double ordinary_cost = 1e7;
inline constexpr double generous_cost = 1e8;

// How many symbols the reference searches at this cost; at most a few thousand.
std::size_t affordable_symbols(const search_settings& settings, double cost);

// How many symbols it takes for a repeat of the longest unit, with something around it.
std::size_t sufficient_symbols(const search_settings& settings);

}  // namespace differential
