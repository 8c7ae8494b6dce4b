// Paths through windows of a record, one block of candidates at a time, by the rows of their distances; once for each
// vector target: to be included after hwy/foreach_target.h.

#include <hwy/highway.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "symbol-bits-inl.h"

#if defined(QUARVO_FAST_WINDOW_PATHS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef QUARVO_FAST_WINDOW_PATHS_INL_H
#undef QUARVO_FAST_WINDOW_PATHS_INL_H
#else
#define QUARVO_FAST_WINDOW_PATHS_INL_H
#endif

HWY_BEFORE_NAMESPACE();
namespace quarvo_window_filter {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Values tell each copy of a unit apart; here paths have to come from one copy to the next, without a bonus. A row
// holds the best score + b of the paths at its distance, in half points, less what their distance has grown since the
// copy began, which moves do not change. Where scores do not fit, all is kept.
class CWindowPaths {
 public:
  // What rows are there, and the cost of an edit; a lower cost only keeps more.
  CWindowPaths(int first_row, int after_rows, int edit_cost)
      : rows_begin(first_row), rows_end(after_rows), edit(std::min(edit_cost, most_edit)) {
    const std::size_t size = static_cast<std::size_t>(rows_end - rows_begin + 2 * margin);
    paths.resize(size);
    next_paths.resize(size);
  }

  // How many edit distances behind those of the rows may be read.
  static constexpr int most_lanes = 32;

  // Whether a path of the block gains enough or outlives what is measured. distances(i) are the edit distances of the
  // i-th whole window of a unit, by row.
  template <typename Distances>
  bool follow(const group_terms& terms, const Distances& distances) {
    if (terms.start > most_score || terms.reached > most_score) return true;
    base = terms.first_row;
    band in{base, base};
    best = terms.start;
    *at(paths, base) = static_cast<std::int16_t>(terms.start);
    for (;;) {
      in = move<0>(in, nullptr, 2 * window + value_slack);
      for (int i = 1; i <= terms.windows; ++i) {
        in = move<free_rows>(in, distances(i), 2 * window);
        if (in.lowest > in.highest) return false;
        if (best >= terms.reached - 2 * window || in.highest + 1 >= rows_end) return true;
        if (row * std::max(in.highest - base, base - in.lowest) > most_drift) return true;
      }
      if (in.highest + terms.first_row + 2 >= rows_end) return true;
      in = enter_next_copy(in, terms);
    }
  }

 private:
  using tag = hn::CappedTag<std::int16_t, most_lanes>;
  using vector = hn::Vec<tag>;

  // Rows with a path: those from `lowest` to `highest`.
  struct band {
    int lowest;
    int highest;
  };

  // Of a path, and of the part of it that its distance makes up. Together with what a move adds or takes off, they fit
  // a lane.
  static constexpr int most_score = 20000;
  static constexpr int most_drift = 8000;
  static constexpr int most_edit = 200;
  static constexpr std::int16_t gone = -32768;
  // Rows beside the others that a move may read.
  static constexpr int margin = most_score / (3 * row) + 2 * most_lanes;

  const tag d{};
  int rows_begin;
  int rows_end;
  int edit;
  int base = 0;  // the row at which the copy began
  int best = 0;  // the highest score of the paths, + b
  std::vector<std::int16_t> paths;
  std::vector<std::int16_t> next_paths;

  // Of moving by so many of them, one at least.
  int cost_of_rows(int count) const { return edit * (row * (count - 1) + 1); }
  int lanes() const { return static_cast<int>(hn::Lanes(d)); }
  vector set(int value) const { return hn::Set(d, static_cast<std::int16_t>(value)); }
  std::int16_t* at(std::vector<std::int16_t>& rows, int r) const {
    return rows.data() + static_cast<std::size_t>(r - rows_begin + margin);
  }

  // Lets this many rows beside a band be read.
  HWY_INLINE void close(std::vector<std::int16_t>& rows, band in, int beside) {
    const auto nothing_there = set(gone);
    for (int i = 0; i < beside; i += lanes()) {
      hn::StoreU(nothing_there, d, at(rows, in.lowest - lanes() - i));
      hn::StoreU(nothing_there, d, at(rows, in.highest + 1 + i));
    }
  }

  // A distance and a unit length make a distance of one of two rows.
  band enter_next_copy(band in, const group_terms& terms) {
    close(paths, in, lanes() + 1);
    const band next{in.lowest + terms.first_row, in.highest + terms.first_row + 1};
    for (int r = in.lowest; r <= in.highest + 1; r += lanes()) {
      const auto same = hn::LoadU(d, at(paths, r));
      const auto below = hn::SaturatedSub(hn::LoadU(d, at(paths, r - 1)), set(row));
      const auto entered = hn::SaturatedAdd(hn::Max(same, below), set(terms.behind));
      hn::StoreU(entered, d, at(next_paths, r + terms.first_row));
    }
    base += terms.first_row;
    best += terms.behind;
    std::swap(paths, next_paths);
    return next;
  }

  // Moves the paths over a window or, without edit distances, over other symbols. Moving by so many rows takes as many
  // indels as there are distances between the nearest of both; a window costs that or its edit distance, whichever is
  // more. Where a path moves by more than `free` rows, its edit distance counts no more.
  template <int free>
  band move(band in, const std::uint8_t* edits, int gained) {
    constexpr int far = free + 1;
    const int charge = cost_of_rows(far);
    const int more = edit * row;
    const int spare = best + gained + row * far - charge;
    const int jumps = spare < 0 ? 0 : spare / (more - row) + 1;  // rows beyond the free ones that can be paid
    close(paths, in, 2 * (free + jumps) + lanes());
    const int first = std::max(rows_begin, in.lowest - free - jumps);
    const int last = std::min(rows_end - 1, in.highest + free + jumps);
    band out{last + 1, first - 1};
    auto highest = set(gone);
    for (int r = first; r <= last; r += lanes()) {
      auto path = hn::LoadU(d, at(paths, r));
      if (free != 0) {
        const hn::Rebind<std::uint8_t, tag> narrow;
        const auto distance = hn::PromoteTo(d, hn::LoadU(narrow, edits + static_cast<std::size_t>(r - rows_begin)));
        const auto cost = hn::Mul(distance, set(edit));
        path = hn::SaturatedSub(path, cost);
        for (int i = 1; i <= free; ++i) {
          path = hn::Max(path, hn::SaturatedSub(beside(r, i), hn::Max(cost, set(cost_of_rows(i)))));
        }
      }
      for (int i = 0; i < jumps; ++i) {
        path = hn::Max(path, hn::SaturatedSub(beside(r, far + i), set(charge + i * more)));
      }
      path = hn::SaturatedAdd(path, set(gained));
      const auto grown = hn::Iota(d, 0);
      const auto score = hn::SaturatedAdd(path, hn::Add(hn::Mul(grown, set(row)), set(row * (r - base))));
      const auto is_alive = hn::Gt(score, set(-1));
      hn::StoreU(hn::IfThenElse(is_alive, path, set(gone)), d, at(next_paths, r));
      highest = hn::Max(highest, score);
      const std::uint64_t alive = quarvo_symbol_bits::HWY_NAMESPACE::bits_of(d, is_alive);
      if (alive == 0) continue;
      out.lowest = std::min(out.lowest, r + std::countr_zero(alive));
      out.highest = r + 63 - std::countl_zero(alive);
    }
    best = hn::GetLane(hn::MaxOfLanes(d, highest));
    std::swap(paths, next_paths);
    return out;
  }

  // The better one of the paths so many rows to either side.
  HWY_INLINE vector beside(int r, int by) {
    return hn::Max(hn::LoadU(d, at(paths, r - by)), hn::LoadU(d, at(paths, r + by)));
  }
};

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_window_filter
HWY_AFTER_NAMESPACE();

#endif
