// Overlap removal: of two mostly overlapping repeats the one with the lower score goes.

#include <algorithm>

#include "CSearchController.h"
#include "global-types-and-parameters.h"

namespace {

using node = std::list<Csat*>::iterator;

unsigned overlap_of(const Csat& a, const Csat& b) {
  return static_cast<unsigned>(std::min(a.pos_right, b.pos_right) - b.pos_left);
}

// True when less than one whole unit of the repeat lies outside the overlap.
bool is_mostly_hidden(const Csat& sat, unsigned overlap) {
  return static_cast<unsigned>(sat.span()) < static_cast<unsigned>(sat.unit_length()) + overlap;
}

// Returns the record to the pool without allocating, and the element that followed it.
node drop(CsatContainer& list, node it) {
  const node next = std::next(it);
  list.pool->records.splice(list.pool->records.end(), list.records, it);
  return next;
}

// Compares a with all repeats after it that begin inside it. Returns the element to go on with as the next a.
node thin_after(CsatContainer& list, node a) {
  node b = std::next(a);
  while (b != list.records.end() && (*a)->pos_right > (*b)->pos_left) {
    const unsigned overlap = overlap_of(**a, **b);
    if (!is_mostly_hidden(**a, overlap) && !is_mostly_hidden(**b, overlap)) {
      ++b;
    } else if ((*a)->score < (*b)->score) {
      return drop(list, a);
    } else {
      b = drop(list, b);
    }
  }
  return std::next(a);
}

}  // namespace

void CSearchController::remove_mostly_hidden(CsatContainer& list) {
  for (node a = list.records.begin(); a != list.records.end();) a = thin_after(list, a);
}

void CSearchController::remove_hidden(CsatContainer& list) {
  if (global_remove_mostly_hidden) remove_mostly_hidden(list);
}
