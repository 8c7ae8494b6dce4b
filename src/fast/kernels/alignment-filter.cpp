#include "alignment-filter.h"

#include <algorithm>

#include "aligned-words.h"
#include "out-of-memory.h"
#include "place-kept.h"
#include "unroll.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "alignment-filter.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace quarvo_alignment_filter {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using tag = hn::CappedTag<std::uint64_t, CBitPlanes::words>;

// Interprets a program for `vectors` plane vectors at a time. Each slot is `vectors` plane vectors long.
template <std::size_t vectors>
class CInterpreter {
 public:
  static constexpr std::size_t slot_words = vectors * CBitPlanes::words;
  static constexpr std::size_t lanes = hn::MaxLanes(tag());

  CInterpreter(const alignment_program& its_program, const CBitPlanes& its_planes, bool does_Ns_match,
               std::uint64_t* its_memory)
      : program(its_program), planes(its_planes), Ns_match(does_Ns_match), memory(its_memory) {}

  // Leaves in the slot `keep` the candidates of the vectors from index t on.
  void run(std::ptrdiff_t t) {
    fill(alignment_program::zero, 0);
    fill(alignment_program::ones, ~std::uint64_t{0});
    for (const auto slot : program.accumulators) fill(slot, 0);
    for (const auto& row : program.rows) {
      for (const auto& op : row.compares) compare(op, t);
      for (const auto& op : row.runs) run_on(op);
      for (const auto& op : row.forks) fork(op);
      for (const auto& op : row.joins) join(op);
      for (const auto& op : row.hits) hit(op);
      for (const auto& op : row.misses) miss(op);
    }
  }

  const std::uint64_t* kept() const { return at(alignment_program::keep); }

 private:
  const alignment_program& program;
  const CBitPlanes& planes;
  bool Ns_match;
  std::uint64_t* memory;
  const tag d;

  std::uint64_t* at(alignment_program::slot slot) const { return memory + slot * slot_words; }

  void fill(alignment_program::slot slot, std::uint64_t value) { std::fill_n(at(slot), slot_words, value); }

  HWY_INLINE void compare(const alignment_program::compare_op& op, std::ptrdiff_t t) {
    const std::uint64_t* const low_a = planes.low(t + op.a);
    const std::uint64_t* const low_b = planes.low(t + op.b);
    const std::uint64_t* const high_a = planes.high(t + op.a);
    const std::uint64_t* const high_b = planes.high(t + op.b);
    std::uint64_t* const to = at(op.matches);
    const auto ones = hn::Set(d, ~std::uint64_t{0});
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto low = hn::Xor(hn::LoadU(d, low_a + i), hn::LoadU(d, low_b + i));
      const auto high = hn::Xor(hn::LoadU(d, high_a + i), hn::LoadU(d, high_b + i));
      hn::Store(hn::AndNot(hn::Or(low, high), ones), d, to + i);
    }
    if (planes.has_Ns()) apply_Ns(planes.Ns(t + op.a), to);
  }

  void apply_Ns(const std::uint64_t* Ns, std::uint64_t* to) {
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto N = hn::LoadU(d, Ns + i);
      const auto matches = hn::Load(d, to + i);
      hn::Store(Ns_match ? hn::Or(matches, N) : hn::AndNot(N, matches), d, to + i);
    }
  }

  HWY_INLINE void run_on(const alignment_program::run_op& op) {
    const std::uint64_t* const hit = at(op.hit);
    const std::uint64_t* const matches = at(op.matches);
    std::uint64_t* const to = at(op.to);
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      hn::Store(hn::And(hn::Load(d, hit + i), hn::Load(d, matches + i)), d, to + i);
    }
  }

  HWY_INLINE void fork(const alignment_program::fork_op& op) {
    const std::uint64_t* const hit = at(op.hit);
    const std::uint64_t* const hit_matches = at(op.hit_matches);
    const std::uint64_t* const miss = at(op.miss);
    const std::uint64_t* const miss_matches = at(op.miss_matches);
    std::uint64_t* const to = at(op.to);
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto matched = hn::And(hn::Load(d, hit + i), hn::Load(d, hit_matches + i));
      const auto edited = hn::AndNot(hn::Load(d, miss_matches + i), hn::Load(d, miss + i));
      hn::Store(hn::Or(matched, edited), d, to + i);
    }
  }

  HWY_INLINE void join(const alignment_program::join_op& op) {
    const std::uint64_t* const hit = at(op.hit);
    const std::uint64_t* const miss = at(op.miss);
    const std::uint64_t* const matches = at(op.hit_matches);
    const std::uint64_t* const insertion = at(op.insertion);
    const std::uint64_t* const insertion_matches = at(op.insertion_matches);
    const std::uint64_t* const deletion = at(op.deletion);
    const std::uint64_t* const deletion_matches = at(op.deletion_matches);
    std::uint64_t* const to = at(op.to);
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto E = hn::Load(d, matches + i);
      const auto diagonal = hn::Or(hn::And(hn::Load(d, hit + i), E), hn::AndNot(E, hn::Load(d, miss + i)));
      const auto inserted = hn::AndNot(hn::Load(d, insertion_matches + i), hn::Load(d, insertion + i));
      const auto deleted = hn::AndNot(hn::Load(d, deletion_matches + i), hn::Load(d, deletion + i));
      hn::Store(hn::Or(diagonal, hn::Or(inserted, deleted)), d, to + i);
    }
  }

  HWY_INLINE void hit(const alignment_program::hit_op& op) {
    const std::uint64_t* const from = at(op.from);
    const std::uint64_t* const matches = at(op.matches);
    std::uint64_t* const to = at(op.to);
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto path = hn::And(hn::Load(d, from + i), hn::Load(d, matches + i));
      hn::Store(hn::Or(hn::Load(d, to + i), path), d, to + i);
    }
  }

  HWY_INLINE void miss(const alignment_program::miss_op& op) {
    const std::uint64_t* const a = at(op.from[0]);
    const std::uint64_t* const b = at(op.from[1]);
    const std::uint64_t* const c = at(op.from[2]);
    const std::uint64_t* const e = at(op.from[3]);
    const std::uint64_t* const matches = at(op.matches);
    std::uint64_t* const to = at(op.to);
    QUARVO_UNROLL
    for (std::size_t i = 0; i < slot_words; i += lanes) {
      const auto paths =
          hn::Or(hn::Or(hn::Load(d, a + i), hn::Load(d, b + i)), hn::Or(hn::Load(d, c + i), hn::Load(d, e + i)));
      hn::Store(hn::Or(hn::Load(d, to + i), hn::AndNot(hn::Load(d, matches + i), paths)), d, to + i);
    }
  }
};

template <std::size_t vectors>
void run_over_stretch(const alignment_program& program, const CBitPlanes& planes, bool Ns_match, CPositionSet& kept) {
  using interpreter = CInterpreter<vectors>;
  const aligned_words memory = allocate_words(program.slots * interpreter::slot_words);
  if (!memory) raise_out_of_memory();
  interpreter run(program, planes, Ns_match, memory.get());
  for (std::size_t t = 0; t < planes.stretch(); t += vectors) {
    run.run(static_cast<std::ptrdiff_t>(t));
    const std::size_t count = std::min(vectors, planes.stretch() - t);
    for (std::size_t i = 0; i < count; ++i) place_kept(run.kept() + i * CBitPlanes::words, t + i, planes, kept);
  }
}

void run_program(const alignment_program& program, const CBitPlanes& planes, bool Ns_match, CPositionSet& kept) {
  if (planes.stretch() == 1) {
    run_over_stretch<1>(program, planes, Ns_match, kept);
  } else {
    run_over_stretch<CBitPlanes::overrun>(program, planes, Ns_match, kept);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_alignment_filter
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_alignment_filter {
HWY_EXPORT(run_program);
}

void run_alignment_program(const alignment_program& program, const CBitPlanes& planes, bool Ns_match,
                           CPositionSet& kept) {
  using namespace quarvo_alignment_filter;
  HWY_DYNAMIC_DISPATCH(run_program)(program, planes, Ns_match, kept);
}
#endif
