#pragma once

#include "alignment-program.h"
#include "bit-planes.h"
#include "position-set.h"

// Runs an alignment program over every position of a sequence.
//
// Adds to `kept`, which ends where the sequence does, every position whose candidate the program keeps. A neutral N
// counts as a match, any other as a mismatch. The margin of the planes must cover the program's reach. Whether units
// that hold an N are kept is arbitrary.
void run_alignment_program(const alignment_program& program, const CBitPlanes& planes, bool Ns_match,
                           CPositionSet& kept);
