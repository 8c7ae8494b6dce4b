#pragma once

// Whether a filter keeps what it must, on every kind of vector code: all candidates that the bound lets reach the
// minimum score, and all that the extension makes good enough, wherever they are and whatever the mask would say.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "CSearchController.h"
#include "bound-by-table.h"
#include "candidate-settings.h"
#include "each-target.h"
#include "position-set.h"

inline std::size_t count_of(const CPositionSet& positions) {
  std::size_t count = 0;
  for (std::size_t p = positions.next(0); p != positions.end(); p = positions.next(p + 1)) ++count;
  return count;
}

// The starts of units that hold no N and are followed by a symbol.
inline std::vector<std::size_t> candidate_positions(const std::string& symbols, unsigned L) {
  std::vector<std::size_t> positions;
  std::size_t after_N = 0;
  for (std::size_t end = 0; end + 1 < symbols.size(); ++end) {
    if (symbols[end] == 'N') after_N = end + 1;
    if (end + 1 >= after_N + L) positions.push_back(end + 1 - L);
  }
  return positions;
}

// The final score of a candidate, extended as defined, before N's are trimmed.
inline int final_score(const std::string& symbols, unsigned L, std::size_t p) {
  Csat sat;
  sat.reset(symbols.data() + p, symbols.data() + p + L);
  CSearchController::extend_imperfect_forward(sat, symbols.data() + symbols.size());
  CSearchController::extend_imperfect_backward(sat, symbols.data() - 1);
  return sat.score;
}

struct filter_case {
  candidate_settings settings;  // in force
  unsigned L;
  std::string symbols;
};

enum class yardstick { bound_and_extension, bound };

// The candidates that must be kept.
inline CPositionSet must_be_kept(const filter_case& c, yardstick by) {
  CPositionSet wanted(c.symbols.size());
  const alignment_bound bound = c.settings.bound(c.L);
  CBoundByTable plain(bound, Ns_are_neutral());
  const char* const begin = c.symbols.data();
  for (const std::size_t p : candidate_positions(c.symbols, c.L)) {
    const bool may_reach = plain.reaches(begin, begin + c.symbols.size(), begin + p);
    const bool is_accepted = by != yardstick::bound && final_score(c.symbols, c.L, p) >= bound.T;
    if (may_reach || is_accepted) wanted.add(p);
    if (is_accepted && !may_reach) {
      ADD_FAILURE() << "The bound refuses an accepted candidate: L " << c.L << ", p " << p << ", " << c.settings.text()
                    << "\n"
                    << c.symbols;
    }
  }
  return wanted;
}

// How many candidates a series of checks has met, each once for each kind of vector code, and how many of these a
// filter kept.
struct filter_counts {
  std::size_t candidates = 0;
  std::size_t wanted = 0;
  std::size_t kept = 0;

  // Of enough candidates to say so.
  double share_of_unwanted_kept() const {
    EXPECT_GT(candidates - wanted, 500U);
    return static_cast<double>(kept - wanted) / static_cast<double>(candidates - wanted);
  }
};

// Keeps the candidates of a case; all of them where the filter does not apply.
using filter_under_test = std::function<CPositionSet(const filter_case&)>;

inline bool loses_one(const filter_case& c, yardstick by, const filter_under_test& keep) {
  const CPositionSet wanted = must_be_kept(c, by);
  const CPositionSet kept = keep(c);
  for (std::size_t p = wanted.next(0); p != wanted.end(); p = wanted.next(p + 1)) {
    if (!kept.has(p)) return true;
  }
  return false;
}

// Cuts off both ends as long as a candidate is still lost.
inline filter_case shrunk(filter_case c, yardstick by, const filter_under_test& keep) {
  for (std::size_t cut = c.symbols.size(); cut != 0; cut /= 2) {
    for (const bool in_front : {true, false}) {
      while (c.symbols.size() > cut) {
        filter_case smaller = c;
        smaller.symbols.erase(in_front ? 0 : c.symbols.size() - cut, cut);
        if (!loses_one(smaller, by, keep)) break;
        c = smaller;
      }
    }
  }
  return c;
}

// Whether what a filter keeps is the same on all kinds of vector code.
enum class on_targets { equal, different };

inline void check_filter(const filter_case& c, yardstick by, const filter_under_test& keep, filter_counts& counts,
                         on_targets kept_sets = on_targets::equal) {
  const CPositionSet wanted = must_be_kept(c, by);
  const std::vector<std::size_t> positions = candidate_positions(c.symbols, c.L);
  CPositionSet kept_before;
  on_each_target([&] {
    if (::testing::Test::HasFailure()) return;
    const CPositionSet kept = keep(c);
    ASSERT_EQ(kept.end(), wanted.end());
    for (const std::size_t p : positions) {
      if (wanted.has(p) && !kept.has(p)) {
        const filter_case small = shrunk(c, by, keep);
        FAIL() << "lost: L " << c.L << ", p " << p << " of " << c.symbols.size() << " symbols, " << c.settings.text()
               << "\nsmall case: " << small.symbols;
      }
      if (kept_sets == on_targets::equal && kept_before.end() != 0) {
        ASSERT_EQ(kept.has(p), kept_before.has(p))
            << "two kinds of vector code differ: L " << c.L << ", p " << p << ", " << c.settings.text() << "\n"
            << c.symbols;
      }
      counts.candidates += 1;
      counts.wanted += wanted.has(p) ? 1 : 0;
      counts.kept += kept.has(p) ? 1 : 0;
    }
    kept_before = kept;
  });
}
