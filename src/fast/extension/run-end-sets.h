#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The sets of places of one choice (run-ends.h), a word for each count of edits, deletions and insertions, and how they
// are made: all words of one count of edits and deletions at once, as a row of 8.

struct run_end_sets {
  static constexpr int most_edits = 7;
  static constexpr int symbols = 64;

  // Words by counts: deletions * row + insertions, after a row that stays 0. Words of more deletions and insertions
  // than edits are 0 as well.
  static constexpr int row = 8;
  static constexpr int guard = row;
  static constexpr std::size_t words = guard + row * row;
  template <typename Word>
  using layer = std::array<Word, words>;
  template <typename Word>
  using layers = std::array<layer<Word>, most_edits + 1>;
  static constexpr std::size_t index(int deletions, int insertions) {
    return static_cast<std::size_t>(guard + deletions * row + insertions);
  }

  // By edits made.
  alignas(64) layers<std::uint64_t> ends{};          // of runs
  alignas(64) layers<std::uint64_t> for_mismatch{};  // those at which that edit is admissible
  alignas(64) layers<std::uint64_t> for_indel{};     // not used if both edits cost the same
  layers<std::int64_t> lost{};                       // what the edits cost beside symbols
  // The highest bit, i: the highest score is i above that after one edit of the cheaper kind. The others tell nothing.
  std::array<std::uint64_t, most_edits + 1> values{};

  const layers<std::uint64_t>& admissible_for_indel(bool has_one_penalty) const {
    return has_one_penalty ? for_mismatch : for_indel;
  }
};

// A choice: what its layers share.
struct run_end_question {
  const std::uint64_t* different;        // as of CSymbolsAhead
  const std::uint64_t* mismatch_places;  // where that edit is admissible, by what was lost on the way
  const std::uint64_t* indel_places;
  std::uint64_t inside;  // the places in front of the end of the sequence
  int cheaper_score;     // of the two kinds of edits
  int depth;
  bool has_one_penalty;
};

struct run_end_outcome {
  int layers;            // that were made
  int highest_layer;     // the last of those with the highest score
  std::uint64_t values;  // of all layers, as of run_end_sets::values
  bool is_cut;           // another edit is admissible after them
  bool is_known;         // no path leaves what is known
};

// Makes the layers after the first, as long as an edit is admissible and up to the depth.
run_end_outcome make_run_end_layers(run_end_sets& sets, const run_end_question& asked);

// The counts with which the layer of so many edits has a run end of the score `highest`, counted from the score at the
// mismatch: bit deletions * row + insertions.
std::uint64_t counts_with_score(const run_end_sets& sets, int edits, int highest, bool has_one_penalty);
