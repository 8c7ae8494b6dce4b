#pragma once

#include <cstddef>
#include <string>

#include "Csat.h"

// The three lines of an alignment, of equal length: the sequence, the markers and the unit again and again.
struct alignment_lines {
  std::string sequence;
  std::string markers;
  std::string unit;

  void clear() {
    sequence.clear();
    markers.clear();
    unit.clear();
  }

  void column(char base, char marker, char unit_symbol) {
    sequence.push_back(base);
    markers.push_back(marker);
    unit.push_back(unit_symbol);
  }

  void flank(const char* begin, const char* end) {
    sequence.append(begin, end);
    markers.append(static_cast<std::size_t>(end - begin), ' ');
    unit.append(static_cast<std::size_t>(end - begin), ' ');
  }
};

// Appends the repeat and its unit, edit by edit. An edit that lies outside the repeat is never met, nor are those after
// it in the list.
void align(alignment_lines& lines, const Csat& sat);
