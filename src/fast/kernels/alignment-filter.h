#pragma once

#include <cstdint>
#include <vector>

#include "alignment-program.h"
#include "bit-planes.h"

// Runs an alignment program over every position of a sequence.
//
// Sets bit p of `kept` (bit p % 64 of word p / 64) for every position p whose candidate the program keeps, and leaves
// the other bits; `kept` must hold (length + 63) / 64 words. A neutral N counts as a match, any other as a mismatch.
// The margin of the planes must cover the program's reach. Bits of units that hold an N are arbitrary.
void run_alignment_program(const alignment_program& program, const CBitPlanes& planes, bool Ns_match,
                           std::uint64_t* kept);
