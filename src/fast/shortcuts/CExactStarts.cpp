#include "CExactStarts.h"

#include <algorithm>
#include <cstring>

CExactStarts::CExactStarts(const char* begin, const char* its_end, const char* its_after_starts,
                           const CShortcuts::exact_scan& its_scan, const search_settings& its_settings)
    : end(its_end),
      after_starts(its_end - its_scan.L < its_after_starts ? its_end - its_scan.L : its_after_starts),
      scan(its_scan),
      settings(its_settings),
      L(static_cast<std::ptrdiff_t>(scan.L)),
      filter(begin, std::min(end, after_starts + std::min(end - after_starts, L + CRunFilter::longest_run)), scan.L,
             CRunFilter::wanted_matches(scan.L, scan.min_score, scan.min_length), settings.rules.passes_over_Ns),
      Ns_known_until(begin),
      one_symbol_end(begin) {}

const char* CExactStarts::next(const char* p) {
  while (p < after_starts) {
    p = filter.first_kept(p);
    if (p >= after_starts) return nullptr;
    const char* const next = after_refused(p);
    if (next == p) return p;
    p = next;
  }
  return nullptr;
}

// The position p itself, or a later one if no start in front of that one need be looked at.
const char* CExactStarts::after_refused(const char* p) {
  const char* next = p;
  if (scan.mask != nullptr) {
    next = after_one_symbol_units(p);
    if (next == p) next = after_covered(p);
  }
  return next == p ? after_Ns(p) : next;
}

// After all starts from p on whose units are L times the same symbol.
const char* CExactStarts::after_one_symbol_units(const char* p) {
  if (p >= one_symbol_end) one_symbol_end = end_of_one_symbol_run(p, end);
  return one_symbol_end - p < L ? p : one_symbol_end - L + 1;
}

// After all starts from p on that lie inside what is covered, together with the position in front of them.
const char* CExactStarts::after_covered(const char* p) const {
  const CAnchorSeq& mask = *scan.mask;
  const char* const free = mask.next_free(p - 1);
  if (free > p) return free;
  return mask.may_anchor(p, scan.L) ? p : p + 1;
}

// After all starts from p on whose units hold an N of the same run of N's.
const char* CExactStarts::after_Ns(const char* p) {
  if (p + L <= Ns_known_until) return p;
  const char* const from = std::max(p, Ns_known_until);
  const auto* const N = static_cast<const char*>(std::memchr(from, 'N', static_cast<std::size_t>(p + L - from)));
  Ns_known_until = N == nullptr ? p + L : end_of_one_symbol_run(N, end);
  return N == nullptr ? p : Ns_known_until;
}

// A start in the repeat finds it again: both units, free of N's, are rotations of each other, and an extension depends
// on no more than the unit as a cycle.
bool CExactStarts::is_known(Csat& sat) {
  const char* const p = sat.unit_begin;
  if (left == nullptr || p < left || right - p < L) return false;
  sat.pos_left = left;
  sat.pos_right = right;
  sat.fwd_unit_cursor = p + (right - p) % L;
  sat.bwd_unit_cursor = sat.unit_end - 1 - (sat.unit_end - left) % L;
  sat.score = score;
  sat.number_of_Ns = number_of_Ns;
  return true;
}

const char* CExactStarts::after(const Csat& sat, bool is_stored, bool is_covered) {
  left = sat.pos_left;
  right = sat.pos_right;
  score = sat.score;
  number_of_Ns = sat.number_of_Ns;
  if (is_covered) return right;
  return is_stored && wants_every_start(sat) ? sat.unit_begin + 1 : right - L + 1;
}

// Whether each start inside a repeat that is not covered gets a record of its own, and not the first alone. The records
// differ in the rotation of their unit and follow each other in the sorted list, before and after an extension. If
// overlaps are removed, the first outlives the others: same ends, same score, and what hides one of them hides all. If
// not, they count as far as they are reported.
bool CExactStarts::wants_every_start(const Csat& sat) const {
  return !settings.removes_mostly_hidden &&
         (scan.is_for_seeds || settings.is_reported(sat.perfection(settings.N_and_perfection_mode)));
}
