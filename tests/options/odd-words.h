// What can be written on a command line for an option, sensible or not.
#pragma once

#include <span>

#include "global-types-and-parameters-options.h"
#include "random-numbers.h"
#include "test-case.h"

// Values at and beyond the limits of every kind of option.
std::span<const char* const> odd_values();

// The ways to give the option this value; a switch ignores it.
std::vector<differential::option_words> spellings(const option_row& option, const char* value);

// The option with a value by chance: as often one of the above as a small number.
differential::option_words random_words(const option_row& option, differential::CRandom& random);
