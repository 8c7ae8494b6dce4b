#include "window-filter.h"

#include <algorithm>
#include <array>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "window-filter.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

#ifndef QUARVO_WINDOW_FILTER_COMMON
#define QUARVO_WINDOW_FILTER_COMMON
namespace quarvo_window_filter {

constexpr int window = CWindowFilter::window;
constexpr int row = CWindowFilter::row;
constexpr int block_rows = 8;      // of which the highest value is kept
constexpr int free_rows = 4;       // by which a path may leave its row within a window at no charge
constexpr std::size_t chains = 2;  // of values, each with a bonus of its own
constexpr int value_slack = row - 1;
constexpr int cap_slack = value_slack + 2 * window;  // the part in front of the first whole window may gain

// Symbols as what they match: one of four, anything (rare symbols and N's), nothing (outside the record).
constexpr std::uint8_t wildcard = 4;
constexpr std::uint8_t N = 5;
constexpr std::uint8_t nothing = 8;

// What is known of the unit lengths of a row in one direction, in half points. A path is held by its score + b.
struct group_terms {
  int start;
  int target;                               // what is reached when enough is gained
  std::array<int, chains> loss;             // of a copy, before its value
  int first_row;                            // that of the unit lengths
  int reached;                              // the path that has gained enough
  int windows;                              // of a copy
  int behind;                               // what the symbols after them may gain
  std::vector<std::array<int, 2>> entries;  // into later copies: the first block of rows and the last
};

struct scoring {
  int edit;                       // c
  std::array<int, chains> bonus;  // for a window
  std::array<int, chains> gain;   // what a value stands for, in 65536ths of it
  int rows_begin;
  int rows_end;
  int most;  // no value is higher; assumed beyond the end of a stretch
  std::vector<group_terms> groups;
};

// Windows behind a stretch in which what is assumed there fades, by 20 to 30 each.
inline int lead_of(int most) { return most / 22 + 4; }

}  // namespace quarvo_window_filter
#endif

#include "window-paths-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_window_filter {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using tag = hn::CappedTag<std::int16_t, 32>;
using vector = hn::Vec<tag>;

// A window in each lane, with a bit for each symbol. It takes two of these for all lanes, or one where lanes are few.
using window_tag = hn::CappedTag<std::int32_t, 16>;
using window_vector = hn::Vec<window_tag>;

// One direction over a sequence of codes that is cut into one stretch for each lane.
class CWindows {
 public:
  CWindows(const std::vector<std::uint8_t>& codes, const scoring& its_scoring,
           std::vector<CWindowFilter::group>& its_groups, std::vector<std::uint32_t> CWindowFilter::group::*its_side,
           std::size_t most_kept)
      : s(its_scoring),
        groups(its_groups),
        side(its_side),
        most_each(most_kept),
        paths(its_scoring.rows_begin, its_scoring.rows_end, its_scoring.edit) {
    windows = (codes.size() + window - 1) / window;
    stretch = static_cast<std::ptrdiff_t>((windows + lanes() - 1) / lanes());
    lead = lead_of(s.most);
    front = std::ptrdiff_t{2} * window;
    lay_out(codes);
    const std::size_t size = static_cast<std::size_t>(s.rows_end - s.rows_begin) * lanes();
    upward.resize(size);
    leaving.resize(size);
    for (const group_terms& terms : s.groups) ring = std::max<std::ptrdiff_t>(ring, terms.windows + 1);
    least_distances.resize(size);
    has_N.resize(lanes());
    distances_a_lane = static_cast<std::size_t>(s.rows_end - s.rows_begin) + CWindowPaths::most_lanes;
    distances.resize(distances_a_lane * lanes() * static_cast<std::size_t>(ring));
    for (chain& c : chains_of_windows) {
      c.values.assign(size, static_cast<std::int16_t>(s.most));
      c.entered.resize(size);
      c.blocks.resize(size / block_rows + lanes());
    }
  }

  void run() {
    for (std::ptrdiff_t k = stretch + lead - 1; k >= 0; --k) {
      if (k < stretch) {
        for (chain& c : chains_of_windows) enter(c);
        note(k);
        if (all_given_up) return;
      }
      for (std::size_t lane = 0; lane < lanes(); lane += hn::Lanes(dw)) measure(k, lane);
      keep_distances(k);
      for (std::size_t i = 0; i < chains; ++i) go_on(chains_of_windows[i], s.bonus[i]);
    }
  }

 private:
  // B, for one bonus.
  struct chain {
    std::vector<std::int16_t> values;   // by row
    std::vector<std::int16_t> entered;  // the best of B where a path may come to within the window in front, by row
    std::vector<std::int16_t> blocks;   // the highest of `entered`
  };

  const tag d{};
  const window_tag dw{};
  const scoring& s;
  std::vector<CWindowFilter::group>& groups;
  std::vector<std::uint32_t> CWindowFilter::group::*side;
  std::size_t most_each;
  std::size_t windows = 0;
  std::ptrdiff_t stretch = 0;
  std::ptrdiff_t lead = 0;
  std::ptrdiff_t front = 0;
  bool all_given_up = false;
  std::vector<std::uint8_t> symbols;   // the vector of index t holds the codes at t - front of each stretch
  std::vector<std::uint8_t> is_plain;  // by t: all codes stand for one of the four symbols
  std::array<chain, chains> chains_of_windows;
  std::vector<std::int16_t> upward;
  std::vector<std::int16_t> leaving;
  std::vector<std::uint8_t> least_distances;  // E, by row
  std::vector<std::uint8_t> has_N;            // of the window in each lane
  std::vector<std::uint8_t> distances;        // E of the windows of a copy, by window, lane and row: a ring
  std::ptrdiff_t ring = 0;                    // how many windows that is
  std::size_t distances_a_lane = 0;
  CWindowPaths paths;

  std::size_t lanes() const { return hn::Lanes(d); }
  static vector set(int value) { return hn::Set(tag(), static_cast<std::int16_t>(value)); }
  std::int16_t* at(std::vector<std::int16_t>& rows, int r) const {
    return rows.data() + static_cast<std::size_t>(r - s.rows_begin) * lanes();
  }
  HWY_INLINE vector load(const std::vector<std::int16_t>& rows, int r) const {
    return hn::LoadU(d, rows.data() + static_cast<std::size_t>(r - s.rows_begin) * lanes());
  }

  // The edit distances of window k of a stretch, by row.
  std::uint8_t* distances_of(std::ptrdiff_t k, std::size_t lane) {
    return distances.data() + (static_cast<std::size_t>(k % ring) * lanes() + lane) * distances_a_lane;
  }

  void lay_out(const std::vector<std::uint8_t>& codes) {
    const std::ptrdiff_t end = (stretch + lead) * window + std::ptrdiff_t{row} * (s.rows_end + 1);
    symbols.assign(static_cast<std::size_t>(front + end) * lanes(), nothing);
    is_plain.assign(static_cast<std::size_t>(front + end), 0);
    for (std::size_t lane = 0; lane < lanes(); ++lane) {
      const std::ptrdiff_t begin = static_cast<std::ptrdiff_t>(lane) * stretch * window;
      const std::ptrdiff_t first = std::max<std::ptrdiff_t>(-front, -begin);
      const std::ptrdiff_t last = std::min<std::ptrdiff_t>(end, static_cast<std::ptrdiff_t>(codes.size()) - begin);
      for (std::ptrdiff_t t = first; t < last; ++t) {
        symbols[static_cast<std::size_t>(t + front) * lanes() + lane] = codes[static_cast<std::size_t>(begin + t)];
      }
    }
    for (std::size_t t = 0; t < is_plain.size(); ++t) {
      const auto* const first = symbols.data() + t * lanes();
      is_plain[t] = std::all_of(first, first + lanes(), [](std::uint8_t code) { return code < wildcard; }) ? 1 : 0;
    }
  }

  HWY_INLINE window_vector symbols_at(std::ptrdiff_t t, std::size_t lane) const {
    const auto* const from = symbols.data() + static_cast<std::size_t>(t + front) * lanes() + lane;
    return hn::PromoteTo(dw, hn::LoadU(hn::Rebind<std::uint8_t, window_tag>(), from));
  }

  // The edit distances of window k in the lanes from this one on, by the row of the end of the text, and whether it has
  // an N.
  void measure(std::ptrdiff_t k, std::size_t lane) {
    const hn::Rebind<std::uint8_t, window_tag> narrow;
    const auto zero = hn::Zero(dw);
    const auto all = hn::Set(dw, -1);
    auto p0 = zero;
    auto p1 = zero;
    auto p2 = zero;
    auto p3 = zero;
    const std::ptrdiff_t begin = k * window;
    auto Ns = zero;
    for (int i = 0; i < window; ++i) {
      const auto symbol = symbols_at(begin + i, lane);
      const auto bit = hn::Set(dw, static_cast<std::int32_t>(std::uint32_t{1} << i));
      p0 = hn::Or(p0, hn::IfThenElseZero(hn::Eq(symbol, zero), bit));
      p1 = hn::Or(p1, hn::IfThenElseZero(hn::Eq(symbol, hn::Set(dw, 1)), bit));
      p2 = hn::Or(p2, hn::IfThenElseZero(hn::Eq(symbol, hn::Set(dw, 2)), bit));
      p3 = hn::Or(p3, hn::IfThenElseZero(hn::Eq(symbol, hn::Set(dw, 3)), bit));
      Ns = hn::Or(Ns, hn::IfThenElseZero(hn::Eq(symbol, hn::Set(dw, N)), bit));
    }
    const auto is_odd = hn::Set(dw, 1);
    const auto is_upper = hn::Set(dw, 2);
    auto plus = all;
    auto minus = zero;
    auto distance = hn::Set(dw, window);
    const auto take = [&](std::ptrdiff_t t) HWY_ATTR {
      const auto symbol = symbols_at(t, lane);
      const auto odd = hn::Ne(hn::And(symbol, is_odd), zero);
      const auto upper = hn::Ne(hn::And(symbol, is_upper), zero);
      auto equal = hn::IfThenElse(upper, hn::IfThenElse(odd, p3, p2), hn::IfThenElse(odd, p1, p0));
      if (is_plain[static_cast<std::size_t>(t + front)] == 0) {
        equal = hn::IfThenElse(hn::Ne(hn::And(symbol, hn::Set(dw, wildcard)), zero), all, equal);
        equal = hn::IfThenZeroElse(hn::Eq(symbol, hn::Set(dw, nothing)), equal);
      }
      const auto vertical = hn::Or(equal, minus);
      const auto horizontal = hn::Or(hn::Xor(hn::Add(hn::And(equal, plus), plus), plus), equal);
      auto up = hn::Or(minus, hn::Not(hn::Or(horizontal, plus)));
      auto down = hn::And(plus, horizontal);
      distance = hn::Add(hn::Sub(distance, hn::ShiftRight<window - 1>(up)), hn::ShiftRight<window - 1>(down));
      up = hn::ShiftLeft<1>(up);
      down = hn::ShiftLeft<1>(down);
      plus = hn::Or(down, hn::Not(hn::Or(vertical, up)));
      minus = hn::And(up, vertical);
    };
    const std::ptrdiff_t end = begin + window;  // of the unit; text that ends at a distance of D ends with end + D - 1
    std::ptrdiff_t t = end + static_cast<std::ptrdiff_t>(row) * s.rows_begin - std::ptrdiff_t{2} * window;
    for (; t < end + static_cast<std::ptrdiff_t>(row) * s.rows_begin - 1; ++t) take(t);
    for (int r = s.rows_begin; r < s.rows_end; ++r) {
      take(t++);
      auto least = distance;
      for (int i = 1; i < row; ++i) {
        take(t++);
        least = hn::Min(least, distance);
      }
      hn::StoreU(hn::DemoteTo(narrow, least), narrow,
                 least_distances.data() + static_cast<std::size_t>(r - s.rows_begin) * lanes() + lane);
    }
    const auto is_there = hn::IfThenElseZero(hn::Ne(Ns, zero), hn::Set(dw, 1));
    hn::StoreU(hn::DemoteTo(narrow, is_there), narrow, has_N.data() + lane);
  }

  // Paths are followed row by row, in one stretch.
  void keep_distances(std::ptrdiff_t k) {
    const auto rows = static_cast<std::size_t>(s.rows_end - s.rows_begin);
    for (std::size_t lane = 0; lane < lanes(); ++lane) {
      std::uint8_t* const to = distances_of(k, lane);
      for (std::size_t r = 0; r < rows; ++r) to[r] = least_distances[r * lanes() + lane];
    }
  }

  // What B is worth to a path that comes to the beginning of its window through part of the one in front.
  void enter(chain& c) {
    const auto one_row = set(row - s.edit);
    const auto row_more = set(row - s.edit * row);
    const auto one_row_down = set(-row - s.edit);
    const auto row_more_down = set(-row - s.edit * row);
    auto from_above = hn::Zero(d);
    for (int r = s.rows_end - 1; r >= s.rows_begin; --r) {
      const auto above = r + 1 < s.rows_end ? hn::SaturatedAdd(load(c.values, r + 1), one_row) : hn::Zero(d);
      from_above = hn::Max(hn::SaturatedAdd(from_above, row_more), above);
      hn::StoreU(hn::Max(load(c.values, r), from_above), d, at(c.entered, r));
    }
    auto from_below = hn::Zero(d);
    for (int first = s.rows_begin; first < s.rows_end; first += block_rows) {
      auto highest = hn::Zero(d);
      for (int r = first; r < std::min(first + block_rows, s.rows_end); ++r) {
        const auto below = r > s.rows_begin ? hn::SaturatedAdd(load(c.values, r - 1), one_row_down) : hn::Zero(d);
        from_below = hn::Max(hn::SaturatedAdd(from_below, row_more_down), below);
        const auto best = hn::Max(load(c.entered, r), from_below);
        hn::StoreU(best, d, at(c.entered, r));
        highest = hn::Max(highest, best);
      }
      hn::StoreU(highest, d, c.blocks.data() + static_cast<std::size_t>((first - s.rows_begin) / block_rows) * lanes());
    }
  }

  // B of a window from B of the next one and the edit distances. No unit has an N.
  void go_on(chain& c, int bonus) {
    constexpr int far = free_rows + 1;
    const auto zero = hn::Zero(d);
    const hn::Rebind<std::uint8_t, tag> narrow;
    const auto Ns = hn::PromoteTo(d, hn::LoadU(narrow, has_N.data()));
    const auto most = hn::IfThenElseZero(hn::Eq(Ns, zero), set(s.most));
    const auto edit = set(s.edit);
    const auto gain = set(2 * window + bonus);
    const auto one_row = set(row);
    const auto up_far = set(far * row - s.edit * (free_rows * row + 1));
    const auto down_far = set(-far * row - s.edit * (free_rows * row + 1));
    const auto up_more = set(row - s.edit * row);
    const auto down_more = set(-row - s.edit * row);
    auto from_above = set(-s.most);
    for (int r = s.rows_end - 1; r >= s.rows_begin; --r) {
      from_above = hn::SaturatedAdd(from_above, up_more);
      if (r + far < s.rows_end) from_above = hn::Max(from_above, hn::SaturatedAdd(load(c.values, r + far), up_far));
      hn::StoreU(from_above, d, at(upward, r));
    }
    for (int r = s.rows_begin; r < s.rows_end; ++r) {
      const auto* const distances_here = least_distances.data() + static_cast<std::size_t>(r - s.rows_begin) * lanes();
      const auto edited = hn::Mul(hn::PromoteTo(d, hn::LoadU(narrow, distances_here)), edit);
      hn::StoreU(hn::SaturatedSub(load(c.values, r), edited), d, at(leaving, r));
    }
    // Behind this row a value is read no more where it is `far` rows down, so the values wait in a ring.
    vector old[far];
    for (int i = 0; i < far; ++i) old[i] = set(-s.most);
    auto from_below = set(-s.most);
    for (int r = s.rows_begin; r < s.rows_end; ++r) {
      from_below = hn::Max(hn::SaturatedAdd(from_below, down_more), hn::SaturatedAdd(old[0], down_far));
      for (int i = 0; i + 1 < far; ++i) old[i] = old[i + 1];
      old[far - 1] = load(c.values, r);
      auto best = hn::Max(load(upward, r), from_below);
      const int begin = std::max(s.rows_begin, r - free_rows);
      const int end = std::min(s.rows_end, r + free_rows + 1);
      auto change = set((begin - r) * row);
      for (int other = begin; other < end; ++other) {
        best = hn::Max(best, hn::SaturatedAdd(load(leaving, other), change));
        change = hn::SaturatedAdd(change, one_row);
      }
      hn::StoreU(hn::Min(hn::Max(hn::SaturatedAdd(best, gain), zero), most), d, at(c.values, r));
    }
  }

  // Notes the candidates that begin in window k and are kept.
  void note(std::ptrdiff_t k) {
    all_given_up = true;
    for (std::size_t g = 0; g < groups.size(); ++g) {
      CWindowFilter::group& found = groups[g];
      if (found.is_given_up) continue;
      all_given_up = false;
      const auto kept = is_kept(s.groups[g]);
      if (!hn::AllFalse(d, kept)) note_lanes(found, s.groups[g], kept, k);
    }
  }

  HWY_INLINE hn::Mask<tag> is_kept(const group_terms& terms) const {
    const auto zero = hn::Zero(d);
    const auto dead = set(-1);
    const auto below_most = set(s.most - cap_slack - 1);
    const auto below_target = set(terms.target - 1);
    auto path = set(terms.start);
    auto kept = hn::Lt(path, zero);  // none
    for (std::size_t copy = 0;; ++copy) {
      const auto is_alive = hn::Gt(path, dead);
      auto left = set(s.most);
      auto highest = left;
      auto is_known = hn::Lt(path, zero);
      for (std::size_t i = 0; i < chains; ++i) {
        const chain& c = chains_of_windows[i];
        const auto value = copy == 0 ? load(c.entered, terms.first_row) : highest_of(c, terms.entries[copy - 1]);
        const auto end = hn::SaturatedAdd(path, value);
        left = hn::Min(left, hn::SaturatedSub(end, set(terms.loss[i])));
        highest = hn::Min(highest, hn::SaturatedAdd(path, gain_of(value, s.gain[i])));
        is_known = hn::Or(is_known, hn::Gt(end, below_most));
      }
      kept = hn::Or(kept, hn::And(is_alive, hn::Or(is_known, hn::Gt(highest, below_target))));
      path = hn::IfThenElse(is_alive, left, path);
      if (hn::AllTrue(d, hn::Lt(path, zero)) || hn::AllTrue(d, kept)) return kept;
      if (copy == terms.entries.size()) return hn::Or(kept, hn::Gt(path, dead));
    }
  }

  HWY_INLINE vector highest_of(const chain& c, const std::array<int, 2>& range) const {
    auto highest = hn::Zero(d);
    for (int block = range[0]; block <= range[1]; ++block) {
      highest = hn::Max(highest, hn::LoadU(d, c.blocks.data() + static_cast<std::size_t>(block) * lanes()));
    }
    return highest;
  }

  // An upper bound of the half points that a value stands for.
  HWY_INLINE vector gain_of(vector value, int gain) const {
    const hn::RebindToUnsigned<tag> du;
    const auto raised = hn::BitCast(du, hn::SaturatedAdd(value, set(value_slack)));
    const auto part = hn::MulHigh(raised, hn::Set(du, static_cast<std::uint16_t>(gain)));
    return hn::SaturatedAdd(hn::BitCast(d, part), set(1));
  }

  // Of the blocks that begin in window k those with a path that gains enough or outlives what is measured.
  HWY_NOINLINE void note_lanes(CWindowFilter::group& found, const group_terms& terms, hn::Mask<tag> kept,
                               std::ptrdiff_t k) {
    std::uint64_t left = quarvo_symbol_bits::HWY_NAMESPACE::bits_of(d, kept);
    std::vector<std::uint32_t>& list = found.*side;
    for (; left != 0; left &= left - 1) {
      const auto lane = static_cast<std::size_t>(hwy::Num0BitsBelowLS1Bit_Nonzero64(left));
      const std::size_t w = lane * static_cast<std::size_t>(stretch) + static_cast<std::size_t>(k);
      if (w >= windows || !paths.follow(terms, [&](int i) { return distances_of(k + i, lane); })) continue;
      list.push_back(static_cast<std::uint32_t>(w));
    }
    if (list.size() <= most_each) return;
    found.is_given_up = true;
    std::vector<std::uint32_t>().swap(found.right);
    std::vector<std::uint32_t>().swap(found.left);
  }
};

void run_windows(const std::vector<std::uint8_t>& codes, const scoring& s, std::vector<CWindowFilter::group>& groups,
                 std::vector<std::uint32_t> CWindowFilter::group::*side, std::size_t most_each) {
  CWindows(codes, s, groups, side, most_each).run();
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_window_filter
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_window_filter {
HWY_EXPORT(run_windows);
}

namespace {

using quarvo_window_filter::group_terms;
using quarvo_window_filter::scoring;

constexpr int window = CWindowFilter::window;
constexpr int row = CWindowFilter::row;

// Of the windows of a record, the share beyond which a unit length is given up on one side, and beyond which both
// sides are many.
constexpr std::size_t one_in_given_up = 6;
constexpr std::size_t few = 200;  // windows are no reason to give up
constexpr std::size_t one_in_many = 48;

// A lower cost only keeps more.
constexpr int most_edit_cost = 500;
int edit_cost(const CWindowFilter::settings& s) {
  constexpr int most_penalty = most_edit_cost / 2;
  return std::min({2 * std::min(s.mismatch_penalty, most_penalty) + 2, 2 * std::min(s.indel_penalty, most_penalty) + 1,
                   most_edit_cost});
}

// On random sequence a window costs a path some 85 half points, so values fade beside these; the larger one tells
// better what dies, the smaller one what was gained.
constexpr std::array<int, quarvo_window_filter::chains> bonuses{56, 40};

// Copies to look at of the longest unit: what paths of random sequence live through, and more.
int copies_of_longest(const CWindowFilter::settings& s) { return s.longest < 1200 ? 6 : 4; }

int lowest_score(const CWindowFilter::settings& s, int L) { return L + s.prefer_longer - 1; }

// Nobody accepts scores that are higher; a lower threshold only keeps more.
constexpr int highest_target = 10000;
int target_score(const CWindowFilter::settings& s, int L) {
  return std::min(s.min_score(static_cast<unsigned>(L)), highest_target);
}

// Half points that a lane can hold, together with what a step adds to them. Sums beyond what it can hold are held
// there.
constexpr int most_half_points = 32000;
static_assert(window * most_edit_cost < most_half_points);

// Whether a lane can hold the path of every candidate that gains enough.
bool fits_lanes(const CWindowFilter::settings& s) {
  int highest = 0;
  for (int L = static_cast<int>(s.shortest); L <= static_cast<int>(s.longest); ++L) {
    highest = std::max(highest, lowest_score(s, L) + target_score(s, L) + 1);
  }
  return 2 * highest < most_half_points;
}

// The score that the right extension of a candidate may have that gains more to the left.
int least_to_the_right(int T) { return (T - 1) / 2; }

// Scores that the paths of a candidate may lose to indels until they have entered whole windows of copy j + 1.
int losses(const CWindowFilter::settings& s, int L, int j, int start) {
  return j * L + window + lowest_score(s, L) + start;
}

int farthest_distance(const CWindowFilter::settings& s, int L, int j, int start) {
  return j * L + losses(s, L, j, start) / s.indel_penalty;
}

// The least distance that a path comes to. Near 0 the sequence is compared with itself, so less than that is left out.
int nearest_distance(const CWindowFilter::settings& s) {
  int nearest = static_cast<int>(s.longest);
  for (int L = static_cast<int>(s.shortest); L <= static_cast<int>(s.longest); ++L) {
    const int start = least_to_the_right(target_score(s, L));
    nearest = std::min(nearest, L - losses(s, L, 1, start) / (s.indel_penalty + 1));
  }
  return std::max(0, nearest);
}

// More than any value that the decision on a candidate has to tell from others. b is the most that a path may lose.
int highest_value(int b, int T) { return 2 * (b + least_to_the_right(T)) + 2 * T + 8 * window; }

int windows_of_copy(int L) { return L / window - 1; }

group_terms terms_of(const CWindowFilter::settings& s, const scoring& scored, int first_L, int last_L,
                     bool to_the_left) {
  int least_T = target_score(s, first_L);
  int most_T = least_T;
  for (int L = first_L; L <= last_L; ++L) {
    least_T = std::min(least_T, target_score(s, L));
    most_T = std::max(most_T, target_score(s, L));
  }
  const int from = to_the_left ? least_to_the_right(most_T) : 0;
  const int needed = to_the_left ? least_T - least_to_the_right(least_T) : least_to_the_right(least_T) + 1;
  const int others = last_L - window * windows_of_copy(last_L);
  group_terms terms{};
  terms.start = 2 * (lowest_score(s, last_L) + from);
  terms.target = terms.start + 2 * needed - 2 * std::max(2 * window, others);
  for (std::size_t i = 0; i < quarvo_window_filter::chains; ++i) {
    terms.loss[i] = scored.bonus[i] * windows_of_copy(last_L) - 2 * others - (row - 1);
  }
  terms.first_row = first_L / row;
  terms.reached = terms.start + 2 * needed;
  terms.windows = windows_of_copy(last_L);
  terms.behind = 2 * (others - window);
  const int rows_a_block = row * quarvo_window_filter::block_rows;
  for (int j = 2;; ++j) {
    if (farthest_distance(s, last_L, j, from) >= row * scored.rows_end) break;
    const int loss = losses(s, last_L, j - 1, from);
    const int nearest = j * first_L - loss / (s.indel_penalty + 1);
    const int farthest = j * last_L + loss / s.indel_penalty;
    const int begin = row * scored.rows_begin;
    terms.entries.push_back({std::max(0, nearest - begin) / rows_a_block, (farthest - begin) / rows_a_block});
  }
  return terms;
}

// What each symbol matches. The four that are met most often are told apart.
std::vector<std::uint8_t> codes_of(const char* sequence, std::size_t length) {
  std::array<std::size_t, 256> counts{};
  for (std::size_t i = 0; i < length; ++i) ++counts[static_cast<unsigned char>(sequence[i])];
  counts['N'] = 0;
  std::array<std::uint8_t, 256> code{};
  code.fill(quarvo_window_filter::wildcard);
  code['N'] = quarvo_window_filter::N;
  for (std::uint8_t c = 0; c < 4; ++c) {
    const auto most = std::max_element(counts.begin(), counts.end());
    if (*most == 0) break;
    code[static_cast<std::size_t>(most - counts.begin())] = c;
    *most = 0;
  }
  std::vector<std::uint8_t> codes(length);
  for (std::size_t i = 0; i < length; ++i) codes[i] = code[static_cast<unsigned char>(sequence[i])];
  return codes;
}

}  // namespace

bool CWindowFilter::pays(const alignment_bound& bound, std::size_t length) {
  constexpr std::size_t usual_lanes = 16;
  const int lead = quarvo_window_filter::lead_of(highest_value(bound.b, std::min(bound.T, highest_target)));
  return length / (window * usual_lanes) >= static_cast<std::size_t>(lead);
}

void CWindowFilter::run(const char* sequence, std::size_t its_length, const settings& s, const symbol_range& around) {
  shortest = s.shortest;
  longest = s.longest;
  groups.assign(longest / row - shortest / row + 1, {{}, {}, !fits_lanes(s)});
  last_with_many = longest;
  if (groups.front().is_given_up) return;
  const int last = static_cast<int>(longest);
  const int from = least_to_the_right(target_score(s, last));
  scoring scored{};
  scored.edit = edit_cost(s);
  scored.bonus = bonuses;
  for (std::size_t i = 0; i < quarvo_window_filter::chains; ++i) {
    scored.gain[i] = 65536 * 2 * window / (2 * window + scored.bonus[i]) + 1;
  }
  scored.rows_begin = nearest_distance(s) / row;
  scored.rows_end = farthest_distance(s, last, copies_of_longest(s), from) / row + 2;
  scored.most = std::min(highest_value(lowest_score(s, last), target_score(s, last)), most_half_points);
  const std::ptrdiff_t reach = row * scored.rows_end + last + window;
  front = static_cast<std::size_t>(std::min(sequence - around.begin, reach));
  length_read =
      front + its_length +
      static_cast<std::size_t>(std::min(around.end - sequence - static_cast<std::ptrdiff_t>(its_length), reach));
  const std::size_t most_each = few + length_read / window / one_in_given_up;
  std::vector<std::uint8_t> codes = codes_of(sequence - front, length_read);
  for (const bool to_the_left : {false, true}) {
    scored.groups.clear();
    for (unsigned g = shortest / row; g <= longest / row; ++g) {
      const int first_L = static_cast<int>(std::max(g * row, shortest));
      const int last_L = static_cast<int>(std::min(g * row + row - 1, longest));
      scored.groups.push_back(terms_of(s, scored, first_L, last_L, to_the_left));
    }
    if (to_the_left) std::reverse(codes.begin(), codes.end());
    using namespace quarvo_window_filter;
    HWY_DYNAMIC_DISPATCH(run_windows)(codes, scored, groups, to_the_left ? &group::left : &group::right, most_each);
  }
  last_with_many = find_last_with_many();
}

bool CWindowFilter::has(unsigned L) const {
  return was_run() && L >= shortest && L <= longest && !groups[L / row - shortest / row].is_given_up;
}

unsigned CWindowFilter::find_last_with_many() const {
  constexpr std::size_t together = 8;
  const std::size_t some = length_read / window / one_in_many;
  std::size_t last = 0;  // one past the last group of which nothing is known
  for (std::size_t g = 0; g < groups.size(); ++g) {
    if (groups[g].is_given_up) last = g + 1;
  }
  for (std::size_t g = last; g < groups.size(); ++g) {
    const std::size_t end = std::min(g + together, groups.size());
    std::size_t kept = 0;
    for (std::size_t i = g; i < end; ++i) kept += groups[i].right.size() + groups[i].left.size();
    if (kept <= (end - g) * some) break;
    last = g + 1;
  }
  return last == 0 ? 0 : std::min(longest, (shortest / row + static_cast<unsigned>(last)) * row - 1);
}

// The positions of each window that is kept, as far as they lie in front of the end: use(first, their bits).
template <typename Use>
void CWindowFilter::for_each_range(unsigned L, std::size_t end, const Use& use) const {
  const group& found = groups[L / row - shortest / row];
  const auto use_window = [&](std::ptrdiff_t first) {
    const std::ptrdiff_t begin = std::max<std::ptrdiff_t>(first, 0);
    const std::ptrdiff_t after = std::min(first + window, static_cast<std::ptrdiff_t>(end));
    if (begin < after) use(static_cast<std::size_t>(begin), ~std::uint64_t{0} >> (64 - (after - begin)));
  };
  const auto before = static_cast<std::ptrdiff_t>(front);
  const auto last = static_cast<std::ptrdiff_t>(length_read) - static_cast<std::ptrdiff_t>(L) - before;
  for (const std::uint32_t w : found.right) use_window(static_cast<std::ptrdiff_t>(w) * window - before);
  for (const std::uint32_t w : found.left) use_window(last - static_cast<std::ptrdiff_t>(w + 1) * window + 1);
}

void CWindowFilter::place(unsigned L, CPositionSet& kept) const {
  for_each_range(L, kept.end(), [&kept](std::size_t first, std::uint64_t bits) { kept.add_64(first, bits); });
}

std::map<std::size_t, std::uint64_t> CWindowFilter::words(unsigned L, std::size_t end) const {
  std::map<std::size_t, std::uint64_t> words;
  for_each_range(L, end, [&words](std::size_t first, std::uint64_t bits) {
    words[first / 64] |= bits << first % 64;
    if (first % 64 > 64 - window && bits >> (64 - first % 64) != 0) words[first / 64 + 1] |= bits >> (64 - first % 64);
  });
  return words;
}
#endif
