#include "return-bound.h"

#include <cstddef>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "return-bound.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "unroll.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_return_bound {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR

bool allows(const return_question&) { return true; }

#else

// One vector holds the scores at 16 places of the unit, at every vector size, so that a step along the unit is a shift
// by one byte.
using block_tag = hn::FixedTag<std::uint8_t, return_bound_block>;
using block = hn::Vec<block_tag>;

// The paths are given up where they live on for longer than most symbols ahead.
constexpr std::ptrdiff_t most_symbols = 400;

template <int blocks>
class CPaths {
 public:
  explicit CPaths(const return_question& asked)
      : question(asked),
        mismatch_penalty(hn::Set(d, byte(asked.mismatch_penalty))),
        indel_penalty(hn::Set(d, byte(asked.indel_penalty))),
        below_needed(hn::Set(d, byte(asked.needed - 1))) {
    alignas(return_bound_block) std::uint8_t bytes[return_bound_block] = {};
    const int last = (asked.unit_length - 1) % return_bound_block;
    bytes[return_bound_block - 1] = byte(last);
    last_symbol = hn::Load(d, bytes);
    for (int i = 0; i < return_bound_block; ++i) bytes[i] = i <= last ? 255 : 0;
    in_last_block = hn::Load(d, bytes);
  }

  bool come_back() {
    alignas(return_bound_block) std::uint8_t at[blocks * return_bound_block] = {};
    at[question.cursor] = byte(question.score);
    block unit[blocks];
    block scores[blocks];
    std::size_t place = 0;
    for (int b = 0; b < blocks; ++b, place += return_bound_block) {
      scores[b] = hn::Load(d, at + place);
      unit[b] = hn::LoadU(d, question.unit + place);
    }
    const std::ptrdiff_t symbols = HWY_MIN(question.symbols, most_symbols);
    const char* ahead = question.ahead;
    for (std::ptrdiff_t i = 0; i < symbols; ++i, ahead += question.step) {
      if (*ahead == 'N' && question.passes_over_Ns) {
        step_along(scores, scores);
        continue;
      }
      const block symbol = hn::Set(d, static_cast<std::uint8_t>(*ahead));
      block fits[blocks];
      QUARVO_UNROLL
      for (int b = 0; b < blocks; ++b) fits[b] = hn::VecFromMask(d, hn::Eq(unit[b], symbol));
      delete_symbols(fits, scores);
      take(fits, scores);
      block alive = scores[0];
      block reached = hn::SaturatedSub(scores[0], below_needed);
      QUARVO_UNROLL
      for (int b = 1; b < blocks; ++b) {
        alive = hn::Or(alive, scores[b]);
        reached = hn::Or(reached, hn::SaturatedSub(scores[b], below_needed));
      }
      if (!is_zero(reached)) return true;
      if (is_zero(alive)) return false;
    }
    return symbols != question.symbols;
  }

 private:
  const return_question& question;
  const block_tag d{};
  block mismatch_penalty;
  block indel_penalty;
  block below_needed;
  block last_symbol;  // as indices: moves that of the last block to the end of the vector
  block in_last_block;

  static std::uint8_t byte(int value) { return static_cast<std::uint8_t>(HWY_MIN(value, 255)); }

  HWY_INLINE bool is_zero(block v) const { return hn::AllTrue(d, hn::Eq(v, hn::Zero(d))); }

  HWY_INLINE block after_indel(block fits, block scores) const {
    return hn::SaturatedSub(hn::AndNot(fits, scores), indel_penalty);
  }

  // Each score one place along the unit, from the last to the first.
  HWY_INLINE void step_along(const block* from, block* to) const {
    block before = hn::TableLookupBytes(from[blocks - 1], last_symbol);
    QUARVO_UNROLL
    for (int b = 0; b < blocks; ++b) {
      const block at_b = from[b];
      to[b] = hn::CombineShiftRightBytes<return_bound_block - 1>(d, at_b, before);
      before = at_b;
    }
    to[blocks - 1] = hn::And(to[blocks - 1], in_last_block);
  }

  // Deletions, as many as improve a score.
  HWY_INLINE void delete_symbols(const block* fits, block* scores) const {
    for (;;) {
      block after[blocks];
      QUARVO_UNROLL
      for (int b = 0; b < blocks; ++b) after[b] = after_indel(fits[b], scores[b]);
      step_along(after, after);
      block better = hn::Zero(d);
      QUARVO_UNROLL
      for (int b = 0; b < blocks; ++b) {
        better = hn::Or(better, hn::SaturatedSub(after[b], scores[b]));
        scores[b] = hn::Max(scores[b], after[b]);
      }
      if (is_zero(better)) return;
    }
  }

  // A match or a mismatch, or an insertion.
  HWY_INLINE void take(const block* fits, block* scores) const {
    block aligned[blocks];
    QUARVO_UNROLL
    for (int b = 0; b < blocks; ++b) {
      const auto lives = hn::Min(scores[b], hn::Set(d, std::uint8_t{1}));
      aligned[b] =
          hn::IfVecThenElse(fits[b], hn::SaturatedAdd(scores[b], lives), hn::SaturatedSub(scores[b], mismatch_penalty));
    }
    step_along(aligned, aligned);
    QUARVO_UNROLL
    for (int b = 0; b < blocks; ++b) scores[b] = hn::Max(aligned[b], after_indel(fits[b], scores[b]));
  }
};

template <int blocks>
bool come_back(const return_question& question) {
  return CPaths<blocks>(question).come_back();
}

bool allows(const return_question& question) {
  switch ((question.unit_length + return_bound_block - 1) / return_bound_block) {
    case 1:
      return come_back<1>(question);
    case 2:
      return come_back<2>(question);
    case 3:
      return come_back<3>(question);
    case 4:
      return come_back<4>(question);
    case 5:
      return come_back<5>(question);
    case 6:
      return come_back<6>(question);
    case 7:
      return come_back<7>(question);
    default:
      return come_back<8>(question);
  }
}

#endif

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_return_bound
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace quarvo_return_bound {
HWY_EXPORT(allows);
}

bool return_bound_allows(const return_question& question) {
  using namespace quarvo_return_bound;
  return HWY_DYNAMIC_DISPATCH(allows)(question);
}

#endif
