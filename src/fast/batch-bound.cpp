#include "batch-bound.h"

#include <algorithm>
#include <array>

#include "direction.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fast/batch-bound.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quarvo_batch_bound {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t lanes = CBatchBound::most_candidates;
constexpr int diagonals = 2 * CBatchBound::band + 1;

using tag = hn::CappedTag<std::uint8_t, lanes>;
using vector = hn::Vec<tag>;

// One direction of the bound, for the Lanes(d) candidates of a vector.
class CAlignment {
 public:
  CAlignment(const alignment_bound& bound, bool does_Ns_match)
      : mismatch(hn::Set(d, clamped(bound.mismatch_penalty))),
        indel(hn::Set(d, clamped(bound.indel_penalty))),
        below_target(hn::Set(d, static_cast<std::uint8_t>(bound.T + bound.b))),
        Ns_match(does_Ns_match) {}

  // Follows all paths from the score `best` on the main diagonal. symbols(row) is the vector of sequence symbols of a
  // row and unit(row, diagonal) that of the unit symbols they must equal. Raises `best` to the highest score met;
  // returns a vector that is not 0 in the lanes that are undecided.
  template <typename Symbols, typename Unit>
  vector follow(vector& best, const Symbols& symbols, const Unit& unit) {
    const auto zero = hn::Zero(d);
    for (auto& score : now) hn::Store(zero, d, score.data());
    hn::Store(hn::IfThenElseZero(hn::Eq(reached(best), zero), best), d, now[CBatchBound::band].data());
    auto undecided = zero;
    for (int row = 0; row < CBatchBound::rows; ++row) {
      if (!take_row(row, best, undecided, symbols, unit)) return undecided;
    }
    auto alive = zero;
    for (const auto& score : now) alive = hn::Or(alive, hn::Load(d, score.data()));
    return hn::Or(undecided, alive);
  }

  // Not 0 in the lanes whose score is the target or more.
  vector reached(vector score) const { return hn::SaturatedSub(score, below_target); }

 private:
  using scores = std::array<std::uint8_t, lanes>;

  const tag d;
  vector mismatch;
  vector indel;
  vector below_target;
  bool Ns_match;
  alignas(64) std::array<scores, diagonals> now;
  alignas(64) std::array<scores, diagonals> next;

  static std::uint8_t clamped(int penalty) { return static_cast<std::uint8_t>(std::min(penalty, 255)); }

  // Returns false when no path is left. Deletions stay in the row, so diagonals are taken in ascending order.
  template <typename Symbols, typename Unit>
  bool take_row(int row, vector& best, vector& undecided, const Symbols& symbols, const Unit& unit) {
    const auto zero = hn::Zero(d);
    const auto one = hn::Set(d, 1);
    const auto symbol = symbols(row);
    const auto is_N = hn::Eq(symbol, hn::Set(d, static_cast<std::uint8_t>('N')));
    for (auto& score : next) hn::Store(zero, d, score.data());
    auto alive = zero;
    auto deleted = zero;
    for (int k = 0; k < diagonals; ++k) {
      const auto score = hn::Max(hn::Load(d, now[at(k)].data()), deleted);
      deleted = zero;
      if (hn::AllTrue(d, hn::Eq(score, zero))) continue;
      auto matches = hn::Eq(symbol, unit(row, k - CBatchBound::band));
      if (Ns_match) matches = hn::Or(matches, is_N);
      const auto raised = hn::Add(score, hn::Min(score, one));
      best = hn::Max(best, hn::IfThenElseZero(matches, raised));
      const auto on = hn::IfThenElse(matches, raised, hn::SaturatedSub(score, mismatch));
      const auto off = hn::IfThenZeroElse(matches, hn::SaturatedSub(score, indel));
      hn::Store(hn::Max(hn::Load(d, next[at(k)].data()), on), d, next[at(k)].data());
      if (k > 0) hn::Store(hn::Max(hn::Load(d, next[at(k - 1)].data()), off), d, next[at(k - 1)].data());
      deleted = off;
      alive = hn::Or(alive, hn::Or(on, off));
      if (k == 0 || k == diagonals - 1) undecided = hn::Or(undecided, off);
    }
    now = next;
    drop_decided(best, undecided);
    return !hn::AllTrue(d, hn::Eq(alive, zero));
  }

  // Lanes that are kept anyway need no more rows.
  void drop_decided(vector best, vector undecided) {
    const auto open = hn::Eq(hn::Or(undecided, reached(best)), hn::Zero(d));
    if (hn::AllTrue(d, open)) return;
    for (auto& score : now) hn::Store(hn::IfThenElseZero(open, hn::Load(d, score.data())), d, score.data());
  }

  static std::size_t at(int k) { return static_cast<std::size_t>(k); }
};

// columns[reach + i][c] is the symbol at distance i from candidate c.
std::uint64_t bound_columns(const alignment_bound& bound, const std::uint8_t* columns, bool Ns_match) {
  const tag d;
  const int L = static_cast<int>(bound.L);
  CAlignment alignment(bound, Ns_match);
  std::uint64_t kept = 0;
  for (std::size_t first = 0; first < lanes; first += hn::Lanes(d)) {
    const auto column = [&](int offset) {
      return hn::LoadU(d, columns + static_cast<std::size_t>(offset + static_cast<int>(CBatchBound::reach)) * lanes + first);
    };
    // Cursors are kept reduced by table, since each row asks for each diagonal's.
    const auto unit_index = [L](int row, int diagonal) { return (row + diagonal + CBatchBound::band * L) % L; };
    auto best = hn::Set(d, static_cast<std::uint8_t>(bound.b + 1));
    auto keep = alignment.follow(
        best, [&](int row) { return column(L + row); },
        [&](int row, int diagonal) { return column(unit_index(row, diagonal)); });
    keep = hn::Or(keep, alignment.follow(
                            best, [&](int row) { return column(-1 - row); },
                            [&](int row, int diagonal) { return column(L - 1 - unit_index(row, diagonal)); }));
    keep = hn::Or(keep, alignment.reached(best));
    std::uint64_t bits = 0;
    std::array<std::uint8_t, 8> bytes{};
    hn::StoreMaskBits(d, hn::Ne(keep, hn::Zero(d)), bytes.data());
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<std::uint8_t*>(&bits));
    kept |= bits << first;
  }
  return kept;
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_batch_bound
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_batch_bound {
HWY_EXPORT(bound_columns);
}

namespace {

constexpr std::size_t window = 2 * CBatchBound::reach + CBatchBound::longest_unit;

// Transposes 8 x 8 bytes: byte c of word r goes to byte r of word c.
void transpose_8(std::array<std::uint64_t, 8>& m) {
  std::uint64_t mask = 0x00000000FFFFFFFF;
  for (unsigned width = 4; width != 0; width >>= 1, mask ^= mask << (8 * width)) {
    for (unsigned r = 0; r < 8; r = ((r | width) + 1) & ~width) {
      const std::uint64_t swapped = ((m[r] >> (8 * width)) ^ m[r | width]) & mask;
      m[r] ^= swapped << (8 * width);
      m[r | width] ^= swapped;
    }
  }
}

}  // namespace

std::uint64_t CBatchBound::may_reach(const alignment_bound& bound, const char* const* positions, std::size_t count,
                                     bool Ns_match) {
  alignas(64) static std::array<std::uint8_t, (window + 8) * most_candidates> columns;
  const std::size_t used = 2 * reach + bound.L;
  for (std::size_t c = 0; c < count; c += 8) {
    for (std::size_t offset = 0; offset < used; offset += 8) {
      std::array<std::uint64_t, 8> block{};
      const std::size_t candidates = std::min<std::size_t>(8, count - c);
      for (std::size_t i = 0; i < candidates; ++i) block[i] = load_word(positions[c + i] - reach + offset);
      transpose_8(block);
      for (std::size_t i = 0; i < 8; ++i) {
        std::copy_n(reinterpret_cast<const std::uint8_t*>(&block[i]), 8, &columns[(offset + i) * most_candidates + c]);
      }
    }
  }
  const std::uint64_t kept = HWY_DYNAMIC_DISPATCH(quarvo_batch_bound::bound_columns)(bound, columns.data(), Ns_match);
  return count == most_candidates ? kept : kept & ((std::uint64_t{1} << count) - 1);
}
#endif
