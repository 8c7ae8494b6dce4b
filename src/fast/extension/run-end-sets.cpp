#include "run-end-sets.h"

#include <algorithm>
#include <bit>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "run-end-sets.cpp"
#include <hwy/foreach_target.h>  // must come before highway.h
#include <hwy/highway.h>

#include "symbol-bits-inl.h"

HWY_BEFORE_NAMESPACE();
namespace quarvo_run_end_sets {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using word_lanes = hn::CappedTag<std::uint64_t, run_end_sets::row>;
using word_vector = hn::Vec<word_lanes>;

// What the rows of a layer add.
struct findings {
  word_vector values;
  word_vector places;   // another edit is admissible there
  word_vector leaving;  // the highest bit: a path leaves what is known
};

// The words from `at` on moved up by one, after the last of the row before, which is 0 where the row is one vector.
HWY_INLINE word_vector moved_up(const std::uint64_t* at, word_vector words) {
  const word_lanes d;
  if constexpr (HWY_TARGET != HWY_SCALAR && hn::MaxLanes(word_lanes()) == run_end_sets::row) {
    alignas(64) static constexpr std::int64_t from[run_end_sets::row] = {7, 0, 1, 2, 3, 4, 5, 6};
    return hn::TableLookupLanes(words, hn::SetTableIndices(d, from));
  } else {
    return hn::LoadU(d, at - 1);
  }
}

// The place at which a path that has lost so much has the score, if it is one of those ahead.
HWY_INLINE std::uint64_t place_with(std::int64_t score, std::int64_t lost) {
  const auto place = static_cast<std::uint64_t>(score + lost);
  return place < run_end_sets::symbols ? std::uint64_t{1} << place : 0;
}

// The places at which an edit is admissible, of the words of a vector that have lost so much.
template <bool one_penalty>
HWY_INLINE word_vector places_of(const std::uint64_t* by_loss, std::uint64_t inside, const std::int64_t* lost) {
  const word_lanes d;
  if constexpr (one_penalty) {
    return hn::Set(d, by_loss[lost[0]] & inside);
  } else {
    alignas(64) std::uint64_t places[run_end_sets::row];
    for (std::size_t i = 0; i < hn::Lanes(d); ++i) places[i] = by_loss[lost[i]] & inside;
    return hn::Load(d, places);
  }
}

// The scores of the run ends, as of run_end_sets::values.
template <bool one_penalty>
HWY_INLINE word_vector values_of(word_vector ends, const std::int64_t* lost, int cheaper_score) {
  const word_lanes d;
  if constexpr (one_penalty) {
    const auto shift = static_cast<std::uint64_t>(lost[0] + cheaper_score);
    return shift < run_end_sets::symbols ? hn::ShiftRightSame(ends, static_cast<int>(shift)) : hn::Zero(d);
  } else {
    alignas(64) std::uint64_t values[run_end_sets::row];
    hn::Store(ends, d, values);
    for (std::size_t i = 0; i < hn::Lanes(d); ++i) {
      const auto shift = static_cast<std::uint64_t>(lost[i] + cheaper_score);
      values[i] = shift < run_end_sets::symbols ? values[i] >> shift : 0;
    }
    return hn::Load(d, values);
  }
}

// The words of the counts from `cell` on, in the layer after that of so many edits. With one penalty all words of a row
// have lost the same.
template <bool one_penalty>
HWY_INLINE void make_words(run_end_sets& sets, const run_end_question& asked, std::size_t edits, std::size_t cell,
                           const std::uint64_t* different_from, findings& added) {
  const word_lanes d;
  const std::uint64_t* const mismatches = sets.for_mismatch[edits - 1].data() + cell;
  const std::uint64_t* const indels = one_penalty ? mismatches : sets.for_indel[edits - 1].data() + cell;
  const std::int64_t* const lost = sets.lost[edits].data() + cell;
  const auto consuming = hn::Or(hn::Load(d, mismatches), moved_up(indels, hn::Load(d, indels)));
  const auto starts = hn::Or(hn::ShiftLeft<1>(consuming), hn::Load(d, indels - run_end_sets::row));
  const auto different = hn::LoadU(d, different_from);
  const auto running = hn::AndNot(different, starts);
  const auto carried = hn::Add(hn::Not(different), running);
  const auto ends = hn::And(hn::Or(carried, starts), different);
  added.leaving = hn::Or(added.leaving, hn::Or(consuming, hn::AndNot(different, hn::Or(running, hn::Not(carried)))));
  added.values = hn::Or(added.values, values_of<one_penalty>(ends, lost, asked.cheaper_score));
  hn::Store(ends, d, sets.ends[edits].data() + cell);

  const auto for_mismatch = hn::And(ends, places_of<one_penalty>(asked.mismatch_places, asked.inside, lost));
  hn::Store(for_mismatch, d, sets.for_mismatch[edits].data() + cell);
  added.places = hn::Or(added.places, for_mismatch);
  if (one_penalty) return;
  const auto for_indel = hn::And(ends, places_of<one_penalty>(asked.indel_places, asked.inside, lost));
  hn::Store(for_indel, d, sets.for_indel[edits].data() + cell);
  added.places = hn::Or(added.places, for_indel);
}

HWY_INLINE bool are_all_zero(word_vector words) {
  const word_lanes d;
  return hn::AllTrue(d, hn::Eq(words, hn::Zero(d)));
}

template <bool one_penalty>
run_end_outcome make_layers(run_end_sets& sets, const run_end_question& question) {
  const run_end_question asked = question;  // not in memory, where each store might change it
  const word_lanes d;
  const auto none = hn::Zero(d);
  const int lanes = static_cast<int>(hn::Lanes(d));
  run_end_outcome made{0, 0, 0, true, true};
  while (made.is_cut && made.layers < asked.depth) {
    const int edits = ++made.layers;
    const auto layer = static_cast<std::size_t>(edits);
    findings added{none, none, none};
    for (int deletions = 0; deletions <= edits; ++deletions) {
      for (int insertions = 0; insertions <= edits - deletions; insertions += lanes) {
        make_words<one_penalty>(sets, asked, layer, run_end_sets::index(deletions, insertions),
                                asked.different + insertions - deletions, added);
      }
    }
    if (!are_all_zero(hn::ShiftRight<run_end_sets::symbols - 1>(added.leaving))) {
      made.is_known = false;
      return made;
    }
    sets.values[layer] = hn::GetLane(hn::MaxOfLanes(d, added.values));
    if (sets.values[layer] >= std::bit_floor(made.values)) made.highest_layer = edits;
    made.values = std::max(made.values, sets.values[layer]);
    made.is_cut = !are_all_zero(added.places);
  }
  return made;
}

run_end_outcome make_layers_of_choice(run_end_sets& sets, const run_end_question& asked) {
  return asked.has_one_penalty ? make_layers<true>(sets, asked) : make_layers<false>(sets, asked);
}

std::uint64_t counts_with_score_of_choice(const run_end_sets& sets, int edits, int highest, bool has_one_penalty) {
  using quarvo_symbol_bits::HWY_NAMESPACE::bits_of;
  const word_lanes d;
  const int lanes = static_cast<int>(hn::Lanes(d));
  const auto layer = static_cast<std::size_t>(edits);
  std::uint64_t counts = 0;
  for (int deletions = 0; deletions <= edits; ++deletions) {
    for (int insertions = 0; insertions <= edits - deletions; insertions += lanes) {
      const std::size_t cell = run_end_sets::index(deletions, insertions);
      const std::int64_t* const lost = sets.lost[layer].data() + cell;
      alignas(64) std::uint64_t places[run_end_sets::row];
      auto wanted = hn::Set(d, place_with(highest, lost[0]));
      if (!has_one_penalty) {
        for (int i = 0; i < lanes; ++i) places[i] = place_with(highest, lost[i]);
        wanted = hn::Load(d, places);
      }
      const auto found = hn::And(hn::Load(d, sets.ends[layer].data() + cell), wanted);
      counts |= bits_of(d, hn::Ne(found, hn::Zero(d))) << (deletions * run_end_sets::row + insertions);
    }
  }
  return counts;
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_run_end_sets
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quarvo_run_end_sets {
HWY_EXPORT(make_layers_of_choice);
HWY_EXPORT(counts_with_score_of_choice);
}  // namespace quarvo_run_end_sets

run_end_outcome make_run_end_layers(run_end_sets& sets, const run_end_question& asked) {
  using namespace quarvo_run_end_sets;
  return HWY_DYNAMIC_DISPATCH(make_layers_of_choice)(sets, asked);
}

std::uint64_t counts_with_score(const run_end_sets& sets, int edits, int highest, bool has_one_penalty) {
  using namespace quarvo_run_end_sets;
  return HWY_DYNAMIC_DISPATCH(counts_with_score_of_choice)(sets, edits, highest, has_one_penalty);
}
#endif  // HWY_ONCE
