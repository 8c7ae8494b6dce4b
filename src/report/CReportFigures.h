#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "CDistribution.h"
#include "CSharedNames.h"
#include "CTrack.h"
#include "repeat-tally.h"

// What a report says of all repeats together, added up in one pass over a results file.
//
// Memory grows with the number of sequences that hold repeats, of unit lengths and of different units, and not with
// the number of repeats.
class CReportFigures {
 public:
  // A sequence with repeats. Name and title, what stands after it in the header, are shortened.
  struct sequence_figures {
    std::int64_t ordinal = 0;  // among all sequences of the results, from 1
    std::string name;
    std::string title;
    CSharedNames::key name_key = 0;
    bool is_bed_name = true;
    bool is_exact = true;  // the name is whole, and UTF-8
    std::optional<int> length;
    std::int64_t repeats = 0;
    std::int64_t covered = 0;
    CTrack track;
  };

  using unit_figures = std::pair<const std::string, repeat_tally>;

  // The next sequence; its repeats follow by ascending start.
  void add(const results_sequence& sequence);
  void add(const results_repeat& repeat);

  // The index of the sequence of the last repeat among those with repeats.
  std::size_t current_sequence() const { return with_repeats.size() - 1; }

  std::int64_t repeats() const { return all.repeats; }
  std::int64_t covered() const { return all.covered(); }
  std::int64_t sequences() const { return sequence_count; }
  // Of all sequences together; nothing when a length is unknown.
  std::optional<std::int64_t> symbols() const;
  std::int64_t shortened_names() const { return shortened; }

  const std::map<int, repeat_tally>& unit_lengths() const { return by_unit_length; }
  std::size_t distinct_units() const { return by_unit.size(); }
  // The units in normal form with the most repeats, at most that many; equal ones in the order of the alphabet.
  std::vector<const unit_figures*> most_frequent_units(std::size_t most) const;

  const CDistribution& lengths() const { return length_distribution; }
  const CDistribution& copies() const { return copy_distribution; }
  const CDistribution& perfections() const { return perfection_distribution; }
  const std::vector<sequence_figures>& sequences_with_repeats() const { return with_repeats; }

  // Why the repeats of a sequence cannot be written as BED under its name, in one word; nothing when they can. Asked
  // when all sequences have come.
  std::optional<std::string_view> name_fault(const sequence_figures& sequence) const;

  // Merges bins of the tracks until none has more than that many.
  void coarsen_tracks(std::size_t most_bins);

 private:
  std::int64_t sequence_count = 0;
  std::int64_t symbol_count = 0;
  bool lengths_are_known = true;
  std::int64_t shortened = 0;
  results_sequence waiting;  // the current sequence, until its first repeat comes
  bool is_waiting = false;
  CSharedNames names;
  CSharedNames::key name_key = 0;  // of the current sequence

  repeat_tally all;
  std::map<int, repeat_tally> by_unit_length;
  std::unordered_map<std::string, repeat_tally> by_unit;
  CDistribution length_distribution{edges_of_sizes()};
  CDistribution copy_distribution{edges_of_sizes()};
  CDistribution perfection_distribution{edges_of_percentages()};
  std::vector<sequence_figures> with_repeats;
  std::size_t most_bins_of_a_track = std::size_t{1} << 14;
  std::size_t bins_of_all_tracks = 0;

  void begin_sequence();
  void extend_track(const results_repeat& repeat, int first_new);
};
