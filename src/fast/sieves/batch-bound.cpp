#include "batch-bound.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

#include "unroll.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "batch-bound.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

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

// Rows are plain arrays: std::array's own functions would be compiled without the instructions that vectors may need.
using vector_16 = hn::Vec<hn::Full128<std::uint8_t>>;
using block_16 = vector_16[16];

// Interleaves row i with row i + 8, which doubles the number of bytes of a column that lie together.
HWY_INLINE void interleave_halves(block_16& rows) {
  const hn::Full128<std::uint8_t> d;
  block_16 interleaved;
  QUARVO_UNROLL
  for (std::size_t i = 0; i < 8; ++i) {
    interleaved[2 * i] = hn::InterleaveLower(d, rows[i], rows[i + 8]);
    interleaved[2 * i + 1] = hn::InterleaveUpper(d, rows[i], rows[i + 8]);
  }
  QUARVO_UNROLL
  for (std::size_t i = 0; i < 16; ++i) rows[i] = interleaved[i];
}

// A block of bytes, 16 x 16: byte c of row r goes to byte r of row c.
void transpose_16(const std::array<const std::uint8_t*, 16>& rows, std::uint8_t* to, std::size_t stride) {
  const hn::Full128<std::uint8_t> d;
  block_16 block;
  QUARVO_UNROLL
  for (std::size_t r = 0; r < 16; ++r) block[r] = hn::LoadU(d, rows[r]);
  QUARVO_UNROLL
  for (int doubling = 0; doubling < 4; ++doubling) interleave_halves(block);
  QUARVO_UNROLL
  for (std::size_t c = 0; c < 16; ++c) hn::StoreU(block[c], d, to + c * stride);
}

#endif

// The surroundings of up to `stride` candidates as columns, one for each distance from the candidate's position, made
// as far as they are asked for: those of the unit are kept, those of the text are asked for in order, once each.
class CScatteredColumns {
 public:
  static constexpr int width = 16;

  // unit_symbols: how many columns from the position on count as those of the unit.
  CScatteredColumns(CBatchBound::memory& its_memory, const symbol_range& its_record, const char* const* its_positions,
                    std::size_t its_count, int unit_symbols, std::size_t lanes)
      : memory(its_memory),
        record(its_record),
        positions(its_positions),
        count(its_count),
        stride((lanes + width - 1) / width * width),
        upper((unit_symbols + width - 1) / width * width) {
    const std::size_t wanted = static_cast<std::size_t>(upper) * stride;
    if (memory.unit.size() < wanted) memory.unit.resize(wanted);
    if (memory.text.size() < width * stride) memory.text.resize(width * stride);
  }

  // The symbols at this distance, by candidate; 0 outside the record.
  const std::uint8_t* unit(int offset) {
    while (offset >= lower && offset < upper) fill_unit(offset);
    return memory.unit.data() + static_cast<std::size_t>(offset) * stride;
  }
  const std::uint8_t* text(int offset) {
    if (offset < text_begin || offset >= text_begin + width) fill_text(offset);
    return memory.text.data() + static_cast<std::size_t>(offset - text_begin) * stride;
  }

 private:
  CBatchBound::memory& memory;
  symbol_range record;
  const char* const* positions;
  std::size_t count;
  std::size_t stride;
  int lower = 0;  // columns of the unit are there below this one and from the next on
  int upper;
  int text_begin = std::numeric_limits<int>::min() / 2;

  // Rightwards the unit is read from its beginning on, leftwards from its end.
  HWY_NOINLINE void fill_unit(int offset) {
    const bool is_nearer_to_lower = offset - lower < upper - offset;
    const int from = is_nearer_to_lower ? lower : upper - width;
    fill(from, memory.unit.data() + static_cast<std::size_t>(from) * stride);
    (is_nearer_to_lower ? lower : upper) = is_nearer_to_lower ? lower + width : from;
  }

  HWY_NOINLINE void fill_text(int offset) {
    text_begin = offset < text_begin ? offset - width + 1 : offset;
    fill(text_begin, memory.text.data());
  }

  void fill(int from, std::uint8_t* to) {
    for (std::size_t c = 0; c < stride; c += width) {
      std::array<const std::uint8_t*, width> rows;
      std::array<std::array<std::uint8_t, width>, width> at_ends;
      // Lanes without a candidate repeat the last one, so that they ask for no rows of their own.
      for (std::size_t i = 0; i < width; ++i) {
        rows[i] = symbols_from(positions[std::min(c + i, count - 1)] - record.begin + from, at_ends[i]);
      }
      transpose_16(rows, to + c, stride);
    }
  }

  // The 16 symbols from the index on, written to `copy` where some of them lie outside the record.
  const std::uint8_t* symbols_from(std::ptrdiff_t index, std::array<std::uint8_t, width>& copy) const {
    const std::ptrdiff_t length = record.end - record.begin;
    const auto* const symbols = reinterpret_cast<const std::uint8_t*>(record.begin);
    if (index >= 0 && index + width <= length) return symbols + index;
    for (int i = 0; i < width; ++i) {
      copy[static_cast<std::size_t>(i)] = index + i >= 0 && index + i < length ? symbols[index + i] : std::uint8_t{0};
    }
    return copy.data();
  }
};

// What the bound reads columns through. Handed on by value, so that nothing is read again in the loops.
struct scattered_view {
  CScatteredColumns* columns;
  const std::uint8_t* unit(int offset) const { return columns->unit(offset); }
  const std::uint8_t* text(int offset) const { return columns->text(offset); }
};

// The same for consecutive candidates, where the sequence itself holds the columns.
struct consecutive_view {
  const std::uint8_t* first;
  const std::uint8_t* unit(int offset) const { return first + offset; }
  const std::uint8_t* text(int offset) const { return first + offset; }
};

// The surroundings of clusters with units of different lengths, in one direction, as columns by distance from where the
// alignments begin: the text, and the unit over and over, with the symbols that candidates whose unit goes on compare.
class CMixedColumns {
 public:
  CMixedColumns(CBatchBound::memory& its_memory, const symbol_range& its_record,
                const CBatchBound::cluster* its_clusters, std::size_t its_count, int its_size, std::size_t its_lanes,
                bool is_rightwards)
      : memory(its_memory),
        record(its_record),
        clusters(its_clusters),
        count(its_count),
        size(its_size),
        lanes(its_lanes),
        step(is_rightwards ? 1 : -1) {}

  const std::uint8_t* unit(int u) { return column_of_unit(u); }
  // Where no unit goes on it is the same as the other.
  const std::uint8_t* longer_unit(int u) { return column_of_unit(u) + lanes; }
  const std::uint8_t* text(int row) {
    while (row >= text_end) fill_text();
    return memory.text.data() + static_cast<std::size_t>(row) * lanes;
  }

 private:
  static constexpr int width = 16;

  CBatchBound::memory& memory;
  symbol_range record;
  const CBatchBound::cluster* clusters;
  std::size_t count;
  int size;
  std::size_t lanes;
  std::ptrdiff_t step;
  int unit_end = 0;  // columns in front of it are there
  int text_end = 0;

  const std::uint8_t* column_of_unit(int u) {
    while (u >= unit_end) fill_units();
    return memory.unit.data() + 2 * static_cast<std::size_t>(u) * lanes;
  }

  static std::uint8_t* room_for(std::vector<std::uint8_t>& columns, int from, std::size_t stride) {
    const std::size_t wanted = static_cast<std::size_t>(from + width) * stride;
    if (columns.size() < wanted) columns.resize(2 * wanted);
    return columns.data() + static_cast<std::size_t>(from) * stride;
  }

  // Lanes without a candidate repeat the last one, so that they ask for no rows of their own.
  const CBatchBound::cluster& of_lane(std::size_t lane) const { return clusters[std::min(lane, count - 1)]; }

  // 0 outside the record.
  std::uint8_t symbol_at(std::ptrdiff_t index) const {
    const bool is_inside = index >= 0 && index < record.end - record.begin;
    return is_inside ? static_cast<std::uint8_t>(record.begin[index]) : std::uint8_t{0};
  }

  HWY_NOINLINE void fill_units() {
    std::uint8_t* const to = room_for(memory.unit, unit_end, 2 * lanes);
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      const CBatchBound::cluster& cluster = of_lane(lane);
      const int L = static_cast<int>(cluster.bound.L);
      const std::ptrdiff_t first = cluster.position - record.begin + (step > 0 ? 0 : size - 1 + L - 1);
      int r = unit_end % L;
      for (int i = 0; i < width; ++i) {
        const bool goes_on = unit_end + i >= L && r < size - 1;
        const std::uint8_t symbol = symbol_at(first + step * r);
        std::uint8_t* const column = to + 2 * static_cast<std::size_t>(i) * lanes + lane;
        column[0] = symbol;
        column[lanes] = goes_on ? symbol_at(first + step * (r + L)) : symbol;
        r = r + 1 == L ? 0 : r + 1;
      }
    }
    unit_end += width;
  }

  HWY_NOINLINE void fill_text() {
    std::uint8_t* const to = room_for(memory.text, text_end, lanes);
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      const CBatchBound::cluster& cluster = of_lane(lane);
      const int beside = step > 0 ? static_cast<int>(cluster.bound.L) : size - 2;
      const std::ptrdiff_t first = cluster.position - record.begin + beside;
      for (int i = 0; i < width; ++i) {
        to[static_cast<std::size_t>(i) * lanes + lane] = symbol_at(first + step * (text_end + i));
      }
    }
    text_end += width;
  }
};

// What shares a vector: candidates of one unit length, clusters of one, or clusters of several.
enum class batch_kind { candidates, clusters, mixed };

// Symbols, one in each lane.
HWY_INLINE hn::Vec<tag_of<std::uint8_t>> load_symbols(tag_of<std::uint8_t> d, const std::uint8_t* from) {
  return hn::LoadU(d, from);
}
HWY_INLINE hn::Vec<tag_of<std::uint16_t>> load_symbols(tag_of<std::uint16_t> d, const std::uint8_t* from) {
  return hn::PromoteTo(d, hn::LoadU(hn::Rebind<std::uint8_t, decltype(d)>(), from));
}

// One direction of the bound, for the Lanes(d) candidates of a vector.
//
// The scores lie in a row of vectors, by diagonal. Where paths leave it at one end, all of them are moved by L
// diagonals.
template <typename Lane>
class CAlignment {
  using tag = tag_of<Lane>;
  using vector = hn::Vec<tag>;

 public:
  CAlignment(const alignment_bound& bound, int cluster_size, bool does_Ns_match, std::vector<std::uint8_t>& memory)
      : mismatch(hn::Set(d, clamped(bound.mismatch_penalty))),
        indel(hn::Set(d, clamped(bound.indel_penalty))),
        below_target(hn::Set(d, static_cast<Lane>(bound.T + bound.b))),
        L(static_cast<int>(bound.L)),
        main(L),
        cluster(cluster_size),
        most_deletions((bound.T + bound.b) / bound.indel_penalty + 1),
        Ns_match(does_Ns_match) {
    const int diagonals = 5 * L + most_deletions + 2;
    const std::size_t wanted = static_cast<std::size_t>(diagonals) * hn::Lanes(d) * sizeof(Lane);
    if (memory.size() < wanted) memory.resize(wanted);
    now = reinterpret_cast<Lane*>(memory.data());
  }

  // For clusters of several unit lengths. No diagonals are one then, so paths may come to an end of their row.
  CAlignment(const alignment_bound& largest, unsigned shortest, vector one_below_target, int cluster_size,
             bool does_Ns_match, std::vector<std::uint8_t>& memory)
      : CAlignment(largest, cluster_size, does_Ns_match, memory) {
    below_target = one_below_target;
    L = static_cast<int>(shortest);
  }

  // Whether paths were given up at an end of the row.
  bool is_given_up() const { return has_no_room; }

  // Follows all paths from the score `best` on the main diagonal for this many rows. symbols(row) is the vector of
  // sequence symbols of a row and units(u) that of the symbols u unit symbols after the first to be compared. Raises
  // `best` to the highest score met; returns a vector that is not 0 in the lanes that are undecided. Lanes where the
  // best is 0 or the target have no paths.
  // Beside it stands longer(u), what candidates of a cluster compare whose unit goes on: of mixed clusters for all u.
  template <batch_kind kind, typename Symbols, typename Units, typename Longer>
  vector follow(vector& best, int rows, const Symbols& symbols, const Units& units, const Longer& longer) {
    constexpr bool is_cluster = kind != batch_kind::candidates;
    const auto start = best;
    has_no_room = false;
    auto decided = reached(best);
    place_start(without(decided, start));
    for (int row = 0; row < rows && lowest <= highest; ++row) {
      if (is_cluster && row != 0 && row < cluster) add_start(without(decided, start));
      take_row<kind>(symbols(row), row, best, units, longer);
      if (lowest > highest) {
        // Where the paths of all candidates of a cluster so far have died, the next ones begin anew.
        if (is_cluster && row + 1 < cluster) place_start(hn::Zero(d));
        continue;
      }
      drop_decided(decided, reached(best));
      if (kind != batch_kind::mixed) {
        fold();
      } else if (lowest == 0 || highest - lowest >= 2 * L || highest >= 5 * main) {
        has_no_room = true;
        break;
      }
    }
    return alive();
  }

  // Not 0 in the lanes whose score is the target or more.
  vector reached(vector score) const { return hn::SaturatedSub(score, below_target); }

 private:
  const tag d;
  vector mismatch;
  vector indel;
  vector below_target;
  int L;
  int main;  // the index of the diagonal that paths begin on
  int cluster;
  int most_deletions;  // in a row
  bool Ns_match;
  int lowest = 0;  // the diagonals with a path, as indices; none when lowest > highest
  int highest = 0;
  bool has_no_room = false;
  Lane* now;  // by diagonal

  Lane* at(int k) const { return now + static_cast<std::size_t>(k) * hn::Lanes(d); }
  static Lane clamped(int penalty) { return static_cast<Lane>(std::min<int>(penalty, hwy::LimitsMax<Lane>())); }
  vector without(vector decided, vector score) const { return hn::IfThenElseZero(hn::Eq(decided, hn::Zero(d)), score); }

  // At row r the cursor of the diagonal k is r + k - main, counted on beyond the unit.
  void place_start(vector score) {
    lowest = highest = main;
    hn::StoreU(score, d, at(main));
  }

  // Puts a path with the score on the main diagonal, beside those that there are.
  void add_start(vector score) {
    for (; lowest > main; --lowest) hn::StoreU(hn::Zero(d), d, at(lowest - 1));
    for (; highest < main; ++highest) hn::StoreU(hn::Zero(d), d, at(highest + 1));
    hn::StoreU(hn::Max(hn::LoadU(d, at(main)), score), d, at(main));
  }

  // Not 0 in the lanes that have a path left.
  vector alive() const {
    auto any = hn::Zero(d);
    for (int k = lowest; k <= highest; ++k) any = hn::Or(any, hn::LoadU(d, at(k)));
    return any;
  }

  // Two diagonals L apart meet the same symbols of text and unit, so the lower one's paths may go on from the other. In
  // a cluster the upper one is the more generous. Afterwards no more than L diagonals have a path, and as many
  // deletions as a row may hold find room above them, and an insertion below.
  void fold() {
    for (; highest - lowest >= L; ++lowest) {
      hn::StoreU(hn::Max(hn::LoadU(d, at(lowest)), hn::LoadU(d, at(lowest + L))), d, at(lowest + L));
    }
    if (lowest == 0) move(L);
    while (highest >= 5 * L) move(-L);
  }

  void move(int by) {
    std::memmove(at(lowest + by), at(lowest),
                 static_cast<std::size_t>(highest - lowest + 1) * hn::Lanes(d) * sizeof(Lane));
    lowest += by;
    highest += by;
  }

  // Deletions stay in the row, so diagonals are taken in ascending order; an insertion leads one down in the next row,
  // to where this row has been read already. Everything is held in locals, since a store to a byte may alias members.
  template <batch_kind kind, typename Units, typename Longer>
  void take_row(vector symbol, int row, vector& best, const Units units, const Longer longer) {
    const auto zero = hn::Zero(d);
    const auto one = hn::Set(d, 1);
    const auto mismatch_penalty = mismatch;
    const auto indel_penalty = indel;
    const auto is_N = Ns_match ? hn::Eq(symbol, hn::Set(d, static_cast<Lane>('N'))) : hn::Ne(zero, zero);
    const int last = highest;
    const int unit_length = L;
    const int last_candidate = cluster - 1;
    const std::size_t lanes = hn::Lanes(d);
    Lane* const scores = now;
    auto row_best = best;
    auto deleted = zero;
    auto below = zero;  // what stays on the diagonal below
    int k = lowest;
    int u = row + k - main;
    int r = u % unit_length;  // the cursor in the unit
    int first_alive = std::numeric_limits<int>::max() / 2;
    int last_alive = -1;
    // Without branches, as nothing is harder to predict than where the last of many paths dies.
    const auto leave = [&](vector scores_left, int at_k) {
      hn::StoreU(scores_left, d, scores + static_cast<std::size_t>(at_k) * lanes);
      const bool is_dead = hn::AllTrue(d, hn::Eq(scores_left, zero));
      first_alive = std::min(first_alive, is_dead ? first_alive : at_k);
      last_alive = is_dead ? last_alive : at_k;
    };
    for (; k <= last || !hn::AllTrue(d, hn::Eq(deleted, zero)); ++k) {
      const auto score =
          k <= last ? hn::Max(hn::LoadU(d, scores + static_cast<std::size_t>(k) * lanes), deleted) : deleted;
      auto may_match = hn::Or(hn::Eq(symbol, units(kind == batch_kind::mixed ? u : r)), is_N);
      auto must_match = may_match;
      const bool goes_on = kind == batch_kind::mixed || (kind == batch_kind::clusters && r < last_candidate);
      if (goes_on && u >= unit_length) {
        // The unit of some candidates begins anew here, that of the others goes on.
        const auto matches = hn::Or(hn::Eq(symbol, longer(kind == batch_kind::mixed ? u : r)), is_N);
        may_match = hn::Or(may_match, matches);
        must_match = hn::And(must_match, matches);
      }
      const auto raised = hn::IfThenElseZero(may_match, hn::Add(score, hn::Min(score, one)));
      row_best = hn::Max(row_best, raised);
      const auto off = hn::IfThenZeroElse(must_match, hn::SaturatedSub(score, indel_penalty));
      leave(hn::Max(below, off), k - 1);
      below = hn::Max(raised, hn::IfThenZeroElse(must_match, hn::SaturatedSub(score, mismatch_penalty)));
      deleted = off;
      ++u;
      r = r + 1 == unit_length ? 0 : r + 1;
    }
    leave(below, k - 1);
    best = row_best;
    lowest = first_alive;
    highest = last_alive;
  }

  // Lanes that are kept anyway need no more rows.
  void drop_decided(vector& decided, vector decided_now) {
    if (hn::AllTrue(d, hn::Eq(decided, decided_now))) return;
    decided = decided_now;
    const auto open = hn::Eq(decided, hn::Zero(d));
    for (int k = lowest; k <= highest; ++k) {
      hn::StoreU(hn::IfThenElseZero(open, hn::LoadU(d, at(k))), d, at(k));
    }
  }
};

// The candidates of one vector. Rightwards those of a cluster begin in ascending order, leftwards in descending order.
template <batch_kind kind, typename Lane, typename View>
std::uint64_t bound_lanes(const alignment_bound& bound, int size, const View& view, int rows, bool Ns_match,
                          CBatchBound::memory& memory) {
  const tag_of<Lane> d;
  const int L = static_cast<int>(bound.L);
  const int last = kind == batch_kind::clusters ? size - 1 : 0;
  CAlignment<Lane> alignment(bound, size, Ns_match, memory.scores);
  const auto text = [=](int offset) { return load_symbols(d, view.text(offset)); };
  const auto unit = [=](int offset) { return load_symbols(d, view.unit(offset)); };
  auto best = hn::Set(d, static_cast<Lane>(bound.b + 1));
  auto keep = alignment.template follow<kind>(
      best, rows, [=](int row) { return text(L + row); }, unit, [=](int u) { return unit(u + L); });
  best = hn::IfThenElse(hn::Eq(keep, hn::Zero(d)), best, hn::Set(d, static_cast<Lane>(bound.T + bound.b + 1)));
  keep = alignment.template follow<kind>(
      best, rows, [=](int row) { return text(last - 1 - row); }, [=](int u) { return unit(last + L - 1 - u); },
      [=](int u) { return unit(last - 1 - u); });
  const auto is_kept = hn::Ne(hn::Or(keep, alignment.reached(best)), hn::Zero(d));
  return quarvo_symbol_bits::HWY_NAMESPACE::bits_of(d, is_kept);
}

template <batch_kind kind, typename Lane>
std::uint64_t bound_scattered_lanes(const alignment_bound& bound, int size, const symbol_range& record,
                                    const char* const* positions, std::size_t count, bool Ns_match,
                                    CBatchBound::memory& memory) {
  const std::size_t lanes = hn::Lanes(tag_of<Lane>());
  const int L = static_cast<int>(bound.L);
  const int unit_symbols = kind == batch_kind::clusters ? L + size - 1 : L;
  const int rows = CBatchBound::rows(bound.L);
  std::uint64_t kept = 0;
  for (std::size_t first = 0; first < count; first += lanes) {
    CScatteredColumns columns(memory, record, positions + first, count - first, unit_symbols, lanes);
    kept |= bound_lanes<kind, Lane>(bound, size, scattered_view{&columns}, rows, Ns_match, memory) << first;
  }
  return kept;
}

template <batch_kind kind>
std::uint64_t bound_batch(const alignment_bound& bound, int size, const symbol_range& record,
                          const char* const* positions, std::size_t count, bool Ns_match, CBatchBound::memory& memory) {
  if (CBatchBound::is_narrow(bound)) {
    return bound_scattered_lanes<kind, std::uint8_t>(bound, size, record, positions, count, Ns_match, memory);
  }
  return bound_scattered_lanes<kind, std::uint16_t>(bound, size, record, positions, count, Ns_match, memory);
}

std::uint64_t bound_scattered(const alignment_bound& bound, const symbol_range& record, const char* const* positions,
                              std::size_t count, bool Ns_match, CBatchBound::memory& memory) {
  return bound_batch<batch_kind::candidates>(bound, 1, record, positions, count, Ns_match, memory);
}

std::uint64_t bound_clusters(const alignment_bound& bound, int size, const symbol_range& record,
                             const char* const* positions, std::size_t count, bool Ns_match,
                             CBatchBound::memory& memory) {
  return bound_batch<batch_kind::clusters>(bound, size, record, positions, count, Ns_match, memory);
}

// The clusters of one vector.
CBatchBound::mixed_result bound_mixed_lanes(int size, const symbol_range& record, const CBatchBound::cluster* clusters,
                                            std::size_t count, bool Ns_match, CBatchBound::memory& memory) {
  using lane = std::uint16_t;
  const tag_of<lane> d;
  const std::size_t lanes = hn::Lanes(d);
  alignment_bound largest = clusters->bound;
  unsigned shortest = largest.L;
  lane starts[batch_lanes];
  lane targets[batch_lanes];
  for (std::size_t i = 0; i < lanes; ++i) {
    const CBatchBound::cluster& cluster = clusters[std::min(i, count - 1)];
    starts[i] = static_cast<lane>(cluster.bound.b + 1);
    targets[i] = static_cast<lane>(cluster.bound.T + cluster.bound.b + 1);
    shortest = std::min(shortest, cluster.bound.L);
    largest.L = std::max(largest.L, cluster.bound.L);
    largest.b = std::max(largest.b, cluster.bound.b);
    largest.T = std::max(largest.T, cluster.bound.T);
  }
  const auto target = hn::LoadU(d, targets);
  CAlignment<lane> alignment(largest, shortest, hn::Sub(target, hn::Set(d, 1)), size, Ns_match, memory.scores);
  const int rows = CBatchBound::rows(largest.L);
  auto best = hn::LoadU(d, starts);
  auto undecided = hn::Zero(d);
  auto keep = undecided;
  for (const bool is_rightwards : {true, false}) {
    best = hn::IfThenElse(hn::Eq(keep, hn::Zero(d)), best, target);
    CMixedColumns columns(memory, record, clusters, count, size, lanes, is_rightwards);
    CMixedColumns* const all = &columns;
    keep = alignment.template follow<batch_kind::mixed>(
        best, rows, [=](int row) { return load_symbols(d, all->text(row)); },
        [=](int u) { return load_symbols(d, all->unit(u)); },
        [=](int u) { return load_symbols(d, all->longer_unit(u)); });
    if (alignment.is_given_up()) undecided = hn::Or(undecided, keep);
  }
  const auto zero = hn::Zero(d);
  using quarvo_symbol_bits::HWY_NAMESPACE::bits_of;
  return {bits_of(d, hn::Ne(hn::Or(keep, alignment.reached(best)), zero)), bits_of(d, hn::Ne(undecided, zero))};
}

CBatchBound::mixed_result bound_mixed(int size, const symbol_range& record, const CBatchBound::cluster* clusters,
                                      std::size_t count, bool Ns_match, CBatchBound::memory& memory) {
  const std::size_t lanes = hn::Lanes(tag_of<std::uint16_t>());
  CBatchBound::mixed_result result{};
  for (std::size_t first = 0; first < count; first += lanes) {
    const auto bits = bound_mixed_lanes(size, record, clusters + first, count - first, Ns_match, memory);
    result.kept |= bits.kept << first;
    result.given_up |= bits.given_up << first;
  }
  return result;
}

template <typename Lane>
std::uint64_t bound_consecutive_lanes(const alignment_bound& bound, const char* position, std::size_t count,
                                      bool Ns_match, CBatchBound::memory& memory) {
  const std::size_t lanes = hn::Lanes(tag_of<Lane>());
  const int rows = CBatchBound::rows_of_next(bound.L);
  std::uint64_t kept = 0;
  for (std::size_t first = 0; first < count; first += lanes) {
    const consecutive_view view{reinterpret_cast<const std::uint8_t*>(position + first)};
    kept |= bound_lanes<batch_kind::candidates, Lane>(bound, 1, view, rows, Ns_match, memory) << first;
  }
  return kept;
}

std::uint64_t bound_consecutive(const alignment_bound& bound, const char* position, std::size_t count, bool Ns_match,
                                CBatchBound::memory& memory) {
  return CBatchBound::is_narrow(bound)
             ? bound_consecutive_lanes<std::uint8_t>(bound, position, count, Ns_match, memory)
             : bound_consecutive_lanes<std::uint16_t>(bound, position, count, Ns_match, memory);
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_batch_bound
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_batch_bound {
HWY_EXPORT(bound_scattered);
HWY_EXPORT(bound_clusters);
HWY_EXPORT(bound_mixed);
HWY_EXPORT(bound_consecutive);
}  // namespace quarvo_batch_bound

namespace {

static_assert(CBatchBound::most_candidates == 64, "a batch is one word of bits");

// The lowest `count` bits, 0 to 64.
std::uint64_t first_bits(std::size_t count) { return count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{0}; }

}  // namespace

std::uint64_t CBatchBound::may_reach(const alignment_bound& bound, const symbol_range& record,
                                     const char* const* positions, std::size_t count, bool Ns_match) {
  using namespace quarvo_batch_bound;
  return HWY_DYNAMIC_DISPATCH(bound_scattered)(bound, record, positions, count, Ns_match, used) & first_bits(count);
}

std::uint64_t CBatchBound::clusters_may_reach(const alignment_bound& bound, int size, const symbol_range& record,
                                              const char* const* positions, std::size_t count, bool Ns_match) {
  using namespace quarvo_batch_bound;
  return HWY_DYNAMIC_DISPATCH(bound_clusters)(bound, size, record, positions, count, Ns_match, used) &
         first_bits(count);
}

CBatchBound::mixed_result CBatchBound::mixed_clusters_may_reach(const cluster* clusters, std::size_t count, int size,
                                                                const symbol_range& record, bool Ns_match) {
  using namespace quarvo_batch_bound;
  const mixed_result result = HWY_DYNAMIC_DISPATCH(bound_mixed)(size, record, clusters, count, Ns_match, used);
  return {result.kept & first_bits(count), result.given_up & first_bits(count)};
}

std::uint64_t CBatchBound::may_reach_next(const alignment_bound& bound, const char* position, std::size_t count,
                                          bool Ns_match) {
  using namespace quarvo_batch_bound;
  return HWY_DYNAMIC_DISPATCH(bound_consecutive)(bound, position, count, Ns_match, used) & first_bits(count);
}
#endif
