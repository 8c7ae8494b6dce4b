#pragma once

#include <optional>
#include <vector>

#include "CSearchController.h"

// Searches of stretches of a record, and how they are joined to what one search of the whole record finds.
//
// What a search does at a start (p, L) depends on the sequence, and on what it found before, in the order of L and then
// of p: the mask is closed where repeats lie. It looks at the mask from p - 1 to p + L, and nowhere else; the exact
// search of single symbols looks instead whether p lies inside the repeat before. Let a run over [a, e) be the search
// that looks at the starts in [a, e) alone, so that the run over all starts is the search of the record.
//
// Theorem. Let X be a run over [a, e) and Y one over [a', e'), a <= a' <= c <= e <= e', and let a repeat reach from the
// first to the last symbol that it covers or that one of its edits stands at. If
//   (1) the repeats of X with starts in front of c that reach c - 1 or beyond are those of Y, and
//   (2) the repeats of Y with starts from c on that reach back to c - 1 + Lmax or beyond are those of X,
// then the repeats of X with starts in front of c and those of Y with starts from c on are those of the run over
// [a, e').
// Proof by induction over the starts in their order. At a start p < c the run over [a, e') sees what X saw: it looks at
// positions up to c - 1 + Lmax, which repeats of starts < c have written that it shares with X by induction, and
// repeats of starts >= c that are those of X by (2). At a start p >= c it looks at positions from c - 1 on and sees
// what Y saw, by (1) in the same way. What it then does depends on the sequence alone.
//
// Of three runs, joined at c1 <= c2, the second join may compare the second run in place of the joined one: what
// reaches c2 - 1 of the starts in front of c1 also reaches c1 - 1, and is the same in both.
//
// A repeat is told by its start, p and L, since its extension is a function of these. So each repeat that only one of
// the two runs has excludes the cuts c that it could make wrong, an interval around it, and any other c will do. Near
// the end of a run its repeats may differ, as it knows nothing of what lies beyond; a few repeats further they are the
// same again, unless a repeat reaches over all of the overlap. Then the overlap must be larger. No cut is taken on
// trust.
//
// Where an exact search stores one record of many alike, that of the first start, a run that begins inside such a
// repeat has another start in its place: a repeat that only one of them has, and so no cut there.
using repeat_list = std::vector<Csat*>;

// The repeats of a run, in the order of results, and of discovery where both ends are equal. Owns them.
class CRepeatRun {
 public:
  // An empty run over nothing.
  CRepeatRun() = default;
  CRepeatRun(search_stretch its_starts, CsatContainer& found);
  CRepeatRun(CRepeatRun&& other) noexcept : starts(other.starts), repeats(std::move(other.repeats)) {
    other.repeats.clear();
  }
  CRepeatRun& operator=(CRepeatRun&& other) noexcept {
    std::swap(starts, other.starts);
    std::swap(repeats, other.repeats);
    return *this;
  }
  CRepeatRun(const CRepeatRun&) = delete;
  CRepeatRun& operator=(const CRepeatRun&) = delete;
  ~CRepeatRun() {
    for (Csat* sat : repeats) delete sat;
  }

  search_stretch starts;
  repeat_list repeats;

  // Hands over the repeats with starts in [from, to) and deletes the others.
  repeat_list take(const char* from, const char* to);
};

// A cut in [from, to] for the runs `left` and `right`, which both cover it; nullptr when none there is proved right.
const char* find_cut(const CRepeatRun& left, const CRepeatRun& right, const char* from, const char* to,
                     unsigned longest_unit);

// Appends the repeats of the next stretch to those before, in the order of results. `is_before` orders both lists.
template <typename Order>
void append_in_order(repeat_list& all, const repeat_list& next, Order is_before) {
  const auto seam = static_cast<std::ptrdiff_t>(all.size());
  all.insert(all.end(), next.begin(), next.end());
  if (seam == 0 || next.empty()) return;
  const auto middle = all.begin() + seam;
  const auto first = std::upper_bound(all.begin(), middle, *middle, is_before);
  const auto last = std::lower_bound(middle, all.end(), *(middle - 1), is_before);
  std::inplace_merge(first, middle, last, is_before);
}

// The order of results; of repeats with equal ends the one found first comes first.
bool is_found_before(const Csat* a, const Csat* b);
