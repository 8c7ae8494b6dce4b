#pragma once

#include <cstdint>
#include <vector>

#include "search-settings.h"

// How a record is cut into stretches to be searched at once: long ones first, shorter and shorter ones towards the end,
// so that no thread is left with a long one when the others have nothing to do any more. What takes longer than its
// length tells is evened out so, too. Costs few borders: their number grows with the logarithm of the length.

// For a record behind which others of `behind` symbols in all wait for the same threads. None is so short that
// its border would cost much beside it, which it does the more the longer units are. By one thread the record is
// searched as a whole.
std::vector<search_stretch> decreasing_stretches(unsigned length, std::int64_t behind, unsigned threads,
                                                 unsigned longest_unit);

// Of about the same length.
std::vector<search_stretch> equal_stretches(unsigned length, unsigned about);
