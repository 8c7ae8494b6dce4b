#ifndef QUARVO_BENCH_SUPPORT_H
#define QUARVO_BENCH_SUPPORT_H

#include <cstddef>
#include <string>

#include "CSequence_Mol.h"
#include "alignment-program.h"

// Inputs of the micro-benchmarks. All are the same in every run and on every machine.

// Random sequence of the four symbols.
std::string random_sequence(std::size_t length);

// Random sequence in which every 1000 symbols a repeat begins, of 40 to 240 symbols and with a unit of 1 to
// `longest_unit`, a twentieth of its symbols replaced, inserted or deleted.
std::string sequence_with_repeats(std::size_t length, unsigned longest_unit);

// Makes the text the symbols of the record.
void fill(CSequence_Mol& record, const std::string& text);

// Gives all parameters their defaults, but for the longest unit, and drops the thresholds made from others.
void set_parameters(unsigned longest_unit);

// What the alignment bound is under the default parameters.
alignment_bound default_bound(unsigned L);

#endif
