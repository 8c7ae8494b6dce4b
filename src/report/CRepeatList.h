#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "CScoreCut.h"
#include "results-records.h"

// The single repeats of a report: all of them as long as there is room, else those that score highest. The same for
// what the results file prints below each.
class CRepeatList {
 public:
  // Alignments of more symbols than this are left out, so that one does not displace thousands.
  static constexpr std::size_t longest_alignment = 20000;

  // A repeat as the page lists it; the meaning of the numbers is that of results_repeat.
  struct row {
    int score;
    std::int64_t order;  // among all repeats of the file, from 0
    std::size_t bytes;
    std::size_t sequence;  // index among those with repeats
    int start;
    int span;
    int excess;                                 // length of the aligned perfect repeat minus span
    std::optional<int> defect;                  // 100 % minus perfection, in thousandths of a percent
    int mismatches, insertions, deletions, Ns;  // 0 where the file does not say
    std::string unit;
  };

  struct alignment {
    int score;
    std::int64_t order;
    std::size_t bytes;
    std::vector<std::string> lines;
  };

  // The index of the repeat's sequence among those with repeats.
  void add(std::size_t sequence, const results_repeat& repeat);

  // What counts of a sequence when repeats are chosen.
  struct sequence_cost {
    std::size_t name;     // bytes of its entry in the page, 0 when that is there anyway
    std::int64_t extent;  // no repeat starts past this position
  };

  // Decides what is listed. A name or unit costs where it comes first. room: bytes for all repeats and alignments;
  // room_of_alignments: how much of it alignments may take, or more when the repeats leave it.
  void finish(std::size_t room, std::size_t room_of_alignments, const std::vector<sequence_cost>& sequences);

  // In the order of the file.
  const std::vector<row>& rows() const { return repeats.kept(); }
  const std::vector<alignment>& alignments() const { return texts.kept(); }

  std::int64_t repeats_left_out() const { return repeats.left_out(); }
  int lowest_score() const { return repeats.lowest_score(); }
  std::int64_t listed_of_lowest_score() const { return repeats.kept_of_lowest_score(); }

  // Alignments of listed repeats that are left out, but not for their own length.
  std::int64_t alignments_left_out() const { return missing_alignments; }
  std::int64_t long_alignments_left_out() const { return too_long; }
  // Every listed repeat of a higher score has its alignment, unless that is too long.
  int best_score_left_out() const { return best_missing; }

 private:
  static constexpr std::size_t most_row_bytes = 40000000;
  static constexpr std::size_t most_alignment_bytes = 20000000;

  CScoreCut<row> repeats{most_row_bytes};
  CScoreCut<alignment> texts{most_alignment_bytes};
  std::int64_t count = 0;
  std::unordered_set<std::int64_t> orders_too_long;
  std::int64_t too_long = 0;
  std::int64_t missing_alignments = 0;
  int best_missing = 0;
  bool has_texts = false;

  void add_lines(std::int64_t order, const results_repeat& repeat);
  std::size_t list_rows(std::size_t room, const std::vector<sequence_cost>& sequences);
  void count_missing();
};
