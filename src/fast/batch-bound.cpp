#include "batch-bound.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "unroll.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fast/batch-bound.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quarvo_batch_bound {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t batch_lanes = CBatchBound::most_candidates;

template <typename Lane>
using tag_of = hn::CappedTag<Lane, batch_lanes / sizeof(Lane)>;

#if HWY_TARGET == HWY_SCALAR

// A block of bytes, 16 x 16: byte c of row r goes to byte r of row c.
void transpose_16(const std::array<const std::uint8_t*, 16>& rows, std::uint8_t* to, std::size_t stride) {
  for (std::size_t c = 0; c < 16; ++c) {
    for (std::size_t r = 0; r < 16; ++r) to[c * stride + r] = rows[r][c];
  }
}

#else

using vector_16 = hn::Vec<hn::Full128<std::uint8_t>>;

// Interleaves row i with row i + 8, which doubles the number of bytes of a column that lie together.
HWY_INLINE void interleave_halves(std::array<vector_16, 16>& rows) {
  const hn::Full128<std::uint8_t> d;
  std::array<vector_16, 16> interleaved;
  QUARVO_UNROLL
  for (std::size_t i = 0; i < 8; ++i) {
    interleaved[2 * i] = hn::InterleaveLower(d, rows[i], rows[i + 8]);
    interleaved[2 * i + 1] = hn::InterleaveUpper(d, rows[i], rows[i + 8]);
  }
  rows = interleaved;
}

// A block of bytes, 16 x 16: byte c of row r goes to byte r of row c.
void transpose_16(const std::array<const std::uint8_t*, 16>& rows, std::uint8_t* to, std::size_t stride) {
  const hn::Full128<std::uint8_t> d;
  std::array<vector_16, 16> block;
  QUARVO_UNROLL
  for (std::size_t r = 0; r < 16; ++r) block[r] = hn::LoadU(d, rows[r]);
  QUARVO_UNROLL
  for (int doubling = 0; doubling < 4; ++doubling) interleave_halves(block);
  QUARVO_UNROLL
  for (std::size_t c = 0; c < 16; ++c) hn::StoreU(block[c], d, to + c * stride);
}

#endif

// The surroundings of the candidates of a batch as columns, one for each distance from the candidate's position, made
// as far as they are asked for.
class CScatteredColumns {
 public:
  CScatteredColumns(const char* const* its_positions, std::size_t its_count, unsigned L)
      : positions(its_positions), count(its_count), side((CBatchBound::reach(L) + width) / width * width) {
    const std::size_t wanted = (2 * side + L + width) * batch_lanes;
    if (bytes.size() < wanted) bytes.resize(wanted);
  }

  // The symbols at this distance, by candidate.
  const std::uint8_t* column(int offset) {
    while (offset >= end) fill(end), end += width;
    while (offset < begin) fill(begin -= width);
    return at(offset);
  }

 private:
  static constexpr int width = 16;

  const char* const* positions;
  std::size_t count;
  std::size_t side;  // columns in front of the candidates
  int begin = 0;
  int end = 0;
  inline static std::vector<std::uint8_t> bytes;  // kept from batch to batch

  std::uint8_t* at(int offset) {
    return bytes.data() + static_cast<std::size_t>(offset + static_cast<int>(side)) * batch_lanes;
  }

  HWY_NOINLINE void fill(int from) {
    for (std::size_t c = 0; c < batch_lanes; c += width) {
      std::array<const std::uint8_t*, width> rows;
      // Lanes without a candidate repeat the last one, so that they ask for no rows of their own.
      for (std::size_t i = 0; i < width; ++i) {
        rows[i] = reinterpret_cast<const std::uint8_t*>(positions[std::min(c + i, count - 1)] + from);
      }
      transpose_16(rows, at(from) + c, batch_lanes);
    }
  }
};

// What the bound reads columns through. Handed on by value, so that nothing is read again in the loops.
struct scattered_view {
  CScatteredColumns* columns;
  const std::uint8_t* column(int offset) const { return columns->column(offset); }
};

// The same for consecutive candidates, where the sequence itself holds the columns.
struct consecutive_view {
  const std::uint8_t* first;
  const std::uint8_t* column(int offset) const { return first + offset; }
};

// Symbols, one in each lane.
HWY_INLINE hn::Vec<tag_of<std::uint8_t>> load_symbols(tag_of<std::uint8_t> d, const std::uint8_t* from) {
  return hn::LoadU(d, from);
}
HWY_INLINE hn::Vec<tag_of<std::uint16_t>> load_symbols(tag_of<std::uint16_t> d, const std::uint8_t* from) {
  return hn::PromoteTo(d, hn::LoadU(hn::Rebind<std::uint8_t, decltype(d)>(), from));
}

// One direction of the bound, for the Lanes(d) candidates of a vector.
template <typename Lane>
class CAlignment {
  using tag = tag_of<Lane>;
  using vector = hn::Vec<tag>;

 public:
  CAlignment(const alignment_bound& bound, bool does_Ns_match)
      : mismatch(hn::Set(d, clamped(bound.mismatch_penalty))),
        indel(hn::Set(d, clamped(bound.indel_penalty))),
        below_target(hn::Set(d, static_cast<Lane>(bound.T + bound.b))),
        L(static_cast<int>(bound.L)),
        band(CBatchBound::band(bound.L)),
        diagonals(2 * band + 1),
        Ns_match(does_Ns_match) {
    now.resize(static_cast<std::size_t>(diagonals) * batch_lanes);
  }

  // Follows all paths from the score `best` on the main diagonal. symbols(row) is the vector of sequence symbols of a
  // row and units(u) that of the symbols u unit symbols behind the first to be compared. Raises `best` to the highest
  // score met; returns a vector that is not 0 in the lanes that are undecided.
  template <bool is_cluster, typename Symbols, typename Units>
  vector follow(vector& best, const Symbols& symbols, const Units& units) {
    if constexpr (is_cluster) {
      return follow_cluster(best, symbols, units);
    } else {
      return follow_candidates(best, symbols, units);
    }
  }

  // Not 0 in the lanes whose score is the target or more.
  vector reached(vector score) const { return hn::SaturatedSub(score, below_target); }

 private:
  template <typename Symbols, typename Units>
  vector follow_candidates(vector& best, const Symbols& symbols, const Units& units) {
    auto undecided = begin(best);
    const int rows = CBatchBound::rows(static_cast<unsigned>(L));
    int u = L - 1 - (band - 1) % L;  // the cursor of diagonal 0
    for (int row = 0; row < rows && lowest <= highest; ++row) {
      take_row<false>(symbols(row), (u + lowest) % L, best, undecided, units);
      drop_decided(hn::Or(undecided, reached(best)));
      u = u + 1 == L ? 0 : u + 1;
    }
    return hn::Or(undecided, alive());
  }

  // The same for clusters, whose candidates begin one behind the other on the main diagonal.
  template <typename Symbols, typename Units>
  vector follow_cluster(vector& best, const Symbols& symbols, const Units& units) {
    const auto start = best;
    auto undecided = begin(best);
    const int rows = CBatchBound::cluster_rows(static_cast<unsigned>(L));
    for (int row = 0; row < rows && lowest <= highest; ++row) {
      if (row != 0 && row < CBatchBound::cluster) add_start(hn::IfThenElseZero(is_open(best, undecided), start));
      take_row<true>(symbols(row), row + lowest - band, best, undecided, units);
      drop_decided(hn::Or(undecided, reached(best)));
      // Where the paths of all candidates so far have died, the next ones begin anew.
      if (lowest > highest && row + 1 < CBatchBound::cluster) place_start(hn::Zero(d));
    }
    return hn::Or(undecided, alive());
  }

  const tag d;
  vector mismatch;
  vector indel;
  vector below_target;
  int L;
  int band;
  int diagonals;
  bool Ns_match;
  int lowest = 0;  // the diagonals with a path, as indices; none when lowest > highest
  int highest = 0;
  inline static std::vector<Lane> now;  // by diagonal; kept from batch to batch

  static Lane* at(int k) { return now.data() + static_cast<std::size_t>(k) * batch_lanes; }
  static Lane clamped(int penalty) { return static_cast<Lane>(std::min<int>(penalty, hwy::LimitsMax<Lane>())); }

  // Puts the score on the main diagonal alone, unless it is the target already; returns no undecided lanes.
  vector begin(vector score) {
    place_start(hn::IfThenElseZero(hn::Eq(reached(score), hn::Zero(d)), score));
    return hn::Zero(d);
  }

  void place_start(vector score) {
    lowest = highest = band;
    hn::StoreU(score, d, at(band));
  }

  // Puts a path with the score on the main diagonal, beside those that there are.
  void add_start(vector score) {
    for (; lowest > band; --lowest) hn::StoreU(hn::Zero(d), d, at(lowest - 1));
    for (; highest < band; ++highest) hn::StoreU(hn::Zero(d), d, at(highest + 1));
    hn::StoreU(hn::Max(hn::LoadU(d, at(band)), score), d, at(band));
  }

  hn::Mask<tag> is_open(vector best, vector undecided) const {
    return hn::Eq(hn::Or(undecided, reached(best)), hn::Zero(d));
  }

  // Not 0 in the lanes that have a path left.
  vector alive() const {
    auto any = hn::Zero(d);
    for (int k = lowest; k <= highest; ++k) any = hn::Or(any, hn::LoadU(d, at(k)));
    return any;
  }

  // Deletions stay in the row, so diagonals are taken in ascending order; an insertion leads one down in the next row,
  // to where this row has been read already. Everything is held in locals, since a store to a byte may alias members.
  // `u` is the cursor of the lowest diagonal; in a cluster it counts on beyond the unit.
  template <bool is_cluster, typename Units>
  void take_row(vector symbol, int u, vector& best, vector& undecided, const Units units) {
    const auto zero = hn::Zero(d);
    const auto one = hn::Set(d, 1);
    const auto mismatch_penalty = mismatch;
    const auto indel_penalty = indel;
    const auto is_N = Ns_match ? hn::Eq(symbol, hn::Set(d, static_cast<Lane>('N'))) : hn::Ne(zero, zero);
    const int last = highest;
    const int end = diagonals;
    const int unit_length = L;
    Lane* const scores = at(0);
    auto row_best = best;
    auto row_undecided = undecided;
    auto deleted = zero;
    auto below = zero;  // what stays on the diagonal below
    int k = lowest;
    int r = is_cluster && u > 0 ? u % unit_length : u;  // the cursor in the unit
    int first_alive = end;
    int last_alive = -1;
    // Without branches, as nothing is harder to predict than where the last of many paths dies.
    const auto leave = [&](vector scores_left, int at_k) {
      hn::StoreU(scores_left, d, scores + static_cast<std::size_t>(at_k) * batch_lanes);
      const int is_dead = hn::AllTrue(d, hn::Eq(scores_left, zero)) ? 1 : 0;
      first_alive = std::min(first_alive, at_k + is_dead * end);
      last_alive = std::max(last_alive, at_k - is_dead * end);
    };
    for (; k <= last || (k < end && !hn::AllTrue(d, hn::Eq(deleted, zero))); ++k) {
      const auto score =
          k <= last ? hn::Max(hn::LoadU(d, scores + static_cast<std::size_t>(k) * batch_lanes), deleted) : deleted;
      auto may_match = hn::Or(hn::Eq(symbol, units(r)), is_N);
      auto must_match = may_match;
      if (is_cluster && u >= unit_length && r < CBatchBound::cluster - 1) {
        // The unit of some candidates begins anew here, that of the others goes on.
        const auto matches = hn::Or(hn::Eq(symbol, units(r + unit_length)), is_N);
        may_match = hn::Or(may_match, matches);
        must_match = hn::And(must_match, matches);
      }
      const auto raised = hn::IfThenElseZero(may_match, hn::Add(score, hn::Min(score, one)));
      row_best = hn::Max(row_best, raised);
      const auto off = hn::IfThenZeroElse(must_match, hn::SaturatedSub(score, indel_penalty));
      if (k > 0) leave(hn::Max(below, off), k - 1);
      if (k == 0 || k == end - 1) row_undecided = hn::Or(row_undecided, off);
      below = hn::Max(raised, hn::IfThenZeroElse(must_match, hn::SaturatedSub(score, mismatch_penalty)));
      deleted = off;
      ++u;
      r = r + 1 == unit_length ? 0 : r + 1;
    }
    leave(below, k - 1);
    best = row_best;
    undecided = row_undecided;
    lowest = first_alive;
    highest = last_alive;
  }

  // Lanes that are kept anyway need no more rows.
  void drop_decided(vector decided) {
    const auto open = hn::Eq(decided, hn::Zero(d));
    if (hn::AllTrue(d, open)) return;
    for (int k = lowest; k <= highest; ++k) {
      hn::StoreU(hn::IfThenElseZero(open, hn::LoadU(d, at(k))), d, at(k));
    }
  }
};

template <typename Vector>
std::uint64_t bits_of(Vector kept) {
  const hn::DFromV<Vector> d;
  std::uint64_t bits = 0;
  std::array<std::uint8_t, 8> bytes{};
  hn::StoreMaskBits(d, hn::Ne(kept, hn::Zero(d)), bytes.data());
  std::memcpy(&bits, bytes.data(), sizeof bits);
  return bits;
}

// Rightwards the candidates of a cluster begin in ascending order, leftwards in descending order.
template <bool is_cluster, typename Lane, typename View>
std::uint64_t bound_lanes(const alignment_bound& bound, View view, bool Ns_match) {
  const tag_of<Lane> d;
  const int L = static_cast<int>(bound.L);
  constexpr int last = is_cluster ? CBatchBound::cluster - 1 : 0;
  CAlignment<Lane> alignment(bound, Ns_match);
  std::uint64_t kept = 0;
  for (std::size_t first = 0; first < batch_lanes; first += hn::Lanes(d)) {
    const auto column = [=](int offset) { return load_symbols(d, view.column(offset) + first); };
    auto best = hn::Set(d, static_cast<Lane>(bound.b + 1));
    auto keep = alignment.template follow<is_cluster>(
        best, [=](int row) { return column(L + row); }, [=](int u) { return column(u); });
    keep = hn::Or(keep, alignment.template follow<is_cluster>(
                            best, [=](int row) { return column(last - 1 - row); },
                            [=](int u) { return column(last + L - 1 - u); }));
    kept |= bits_of(hn::Or(keep, alignment.reached(best))) << first;
  }
  return kept;
}

template <bool is_cluster, typename View>
std::uint64_t bound_batch(const alignment_bound& bound, View view, bool Ns_match) {
  return CBatchBound::is_narrow(bound) ? bound_lanes<is_cluster, std::uint8_t>(bound, view, Ns_match)
                                       : bound_lanes<is_cluster, std::uint16_t>(bound, view, Ns_match);
}

std::uint64_t bound_scattered(const alignment_bound& bound, const char* const* positions, std::size_t count,
                              bool Ns_match) {
  CScatteredColumns columns(positions, count, bound.L);
  return bound_batch<false>(bound, scattered_view{&columns}, Ns_match);
}

std::uint64_t bound_clusters(const alignment_bound& bound, const char* const* positions, std::size_t count,
                             bool Ns_match) {
  CScatteredColumns columns(positions, count, bound.L);
  return bound_batch<true>(bound, scattered_view{&columns}, Ns_match);
}

std::uint64_t bound_consecutive(const alignment_bound& bound, const char* position, bool Ns_match) {
  return bound_batch<false>(bound, consecutive_view{reinterpret_cast<const std::uint8_t*>(position)}, Ns_match);
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_batch_bound
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_batch_bound {
HWY_EXPORT(bound_scattered);
HWY_EXPORT(bound_clusters);
HWY_EXPORT(bound_consecutive);
}  // namespace quarvo_batch_bound

namespace {

static_assert(CBatchBound::most_candidates == 64, "a batch is one word of bits");

// The lowest `count` bits, 1 to 64.
std::uint64_t first_bits(std::size_t count) { return ~std::uint64_t{0} >> (64 - count); }

}  // namespace

std::uint64_t CBatchBound::may_reach(const alignment_bound& bound, const char* const* positions, std::size_t count,
                                     bool Ns_match) {
  const std::uint64_t kept =
      HWY_DYNAMIC_DISPATCH(quarvo_batch_bound::bound_scattered)(bound, positions, count, Ns_match);
  return kept & first_bits(count);
}

std::uint64_t CBatchBound::clusters_may_reach(const alignment_bound& bound, const char* const* positions,
                                              std::size_t count, bool Ns_match) {
  const std::uint64_t kept =
      HWY_DYNAMIC_DISPATCH(quarvo_batch_bound::bound_clusters)(bound, positions, count, Ns_match);
  return kept & first_bits(count);
}

std::uint64_t CBatchBound::may_reach_next(const alignment_bound& bound, const char* position, std::size_t count,
                                          bool Ns_match) {
  return HWY_DYNAMIC_DISPATCH(quarvo_batch_bound::bound_consecutive)(bound, position, Ns_match) & first_bits(count);
}
#endif
