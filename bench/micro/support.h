#pragma once

#include <cstddef>
#include <string>

#include "CFastShortcuts.h"
#include "CSearchController.h"
#include "CSequence_Mol.h"
#include "alignment-program.h"
#include "position-set.h"

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

// A search of the record as the program makes it.
class CFastSearch {
 public:
  explicit CFastSearch(CSequence_Mol& record) : controller(1, record, settings, workspace) {
    shortcuts.begin_record(record.symbols.buffer, record.symbols.buffer + record.symbols.length, settings);
  }

 private:
  search_settings settings = (CSearchController::make_minimum_arrays(), current_search_settings());
  CFastShortcuts shortcuts;
  search_workspace workspace{sat_alloc, &shortcuts};

 public:
  CSearchController controller;
};

// How many of all positions are in the set.
double share_of(const CPositionSet& positions);

// What the alignment bound is under the default parameters.
alignment_bound default_bound(unsigned L);
