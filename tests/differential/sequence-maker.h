// Random sequences that are full of tandem repeats and of what makes them hard.
#pragma once

#include <cstddef>
#include <string>

#include "random-numbers.h"
#include "search-settings.h"

namespace differential {

// About as many symbols as asked for, out of A, C, G, T and N: planted repeats with units as long as the settings
// search them, perfect and mutated, overlapping and nested, with runs of N's about as long as the settings allow.
// The repeats lie one upon the other.
std::string make_sequence(CRandom& random, const search_settings& settings, std::size_t symbols);

// The same with plain stretches between the repeats, hundreds of symbols long.
std::string make_sparse_sequence(CRandom& random, const search_settings& settings, std::size_t symbols);

}  // namespace differential
