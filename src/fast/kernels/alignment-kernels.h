#pragma once

#include <span>

#include "alignment-program.h"
#include "bit-planes.h"
#include "position-set.h"

// Alignment programs that are known when Quarvo is built, those of the default scoring, as machine code.
//
// The interpreter loads and stores a plane for every operand; a compiler keeps most of them in registers and joins
// operations, which makes the same test two to four times as fast. kernels/write-kernels.cpp writes the code while
// Quarvo is built; it makes the program as the interpreter's is made, so that both keep the same candidates.
struct alignment_kernel {
  alignment_bound bound;  // what it was made for
  int reach;              // as of the program

  // As run_alignment_program does, with N's, if there are any, neutral.
  void (*run)(const CBitPlanes& planes, CPositionSet& kept);
};

// All that there are.
std::span<const alignment_kernel> alignment_kernels();

// The kernel for the bound, or null.
const alignment_kernel* find_alignment_kernel(const alignment_bound& bound);
