#pragma once

#include <cstddef>

#include "CAnchorSeq.h"
#include "CShortcuts.h"
#include "Csat.h"
#include "run-filter.h"

// The starts of one unit length that an exact search need look at, in order.
//
// Left out are the starts that the run filter refuses, whose unit is one symbol repeated or holds an N, and those deep
// inside what is covered. What follows a start whose repeat is known is left out as well: take the unit AC in
//
//   position  0         1
//             0123456789012
//             TTACACACACTGG     start 2 finds [2, 10); so would the starts 3 to 8, whose units are its rotations
//
// If the repeat was covered, the next start is 10. If it was not stored, or one record of it is enough, the next is 9,
// the first whose unit leaves the repeat. Else 3, and that record is a copy.
class CExactStarts {
 public:
  // In front of `after_starts`, of the record [begin, end).
  CExactStarts(const char* begin, const char* end, const char* its_after_starts, const CShortcuts::exact_scan& its_scan,
               const search_settings& its_settings);

  // The first at or after p, no smaller p than before; nullptr when there is none.
  const char* next(const char* p);

  // Gives a start inside the repeat noted last the ends that its extension would find. Returns false elsewhere.
  bool is_known(Csat& sat);

  // Notes the repeat of a start. Returns where to go on.
  const char* after(const Csat& sat, bool is_stored, bool is_covered);

 private:
  const char* end;
  const char* after_starts;
  CShortcuts::exact_scan scan;
  const search_settings& settings;
  std::ptrdiff_t L;
  CRunFilter filter;
  const char* Ns_known_until;  // there is no N in front of it that is not also in front of the last start
  const char* one_symbol_end;  // the end of the run of one symbol that the last start asked for lies in

  // The repeat found last.
  const char* left = nullptr;
  const char* right = nullptr;
  int score = 0;
  int number_of_Ns = 0;

  const char* after_refused(const char* p);
  const char* after_one_symbol_units(const char* p);
  const char* after_covered(const char* p) const;
  const char* after_Ns(const char* p);
  bool wants_every_start(const Csat& sat) const;
};
