#pragma once

#include <optional>
#include <string_view>

#include "CCandidateQueue.h"
#include "CExactStarts.h"
#include "CShortcuts.h"
#include "candidate-filter.h"
#include "edit-choice.h"
#include "look-ahead.h"
#include "record-pool.h"

// Which shortcuts are taken. The results are the same with any of them off, only later; tests compare them, benchmarks
// measure what each is worth.
struct shortcut_switches {
  bool candidates = true;    // positions that cannot lead to a repeat are left out
  bool tighter_test = true;  // those left are tested once more, in batches
  bool path_bound = true;    // an extension or seed whose paths cannot reach the score is left out
  bool edit_choice = true;   // the three look-aheads at a mismatch are followed as one, equal places once
  bool exact_starts = true;  // starts that cannot lead to an exact repeat, or to a known one, are left out
};

// The shortcuts that make the search fast: this class asks what the other folders of fast/ know. Keeps its memory from
// record to record. Not for two searches at once.
class CFastShortcuts final : public CShortcuts {
 public:
  explicit CFastShortcuts(const shortcut_switches& its_switches = {}) : switches(its_switches) {}

  void announce(std::string_view text_ahead) override { pool.announce(text_ahead); }
  void begin_record(const char* its_begin, const char* its_end, const search_settings& its_settings) override;
  void end_record() override;

  const char* first_candidate(unsigned L, const CAnchorSeq& mask) override;
  const char* next_candidate(bool was_accepted) override;

  bool may_reach(const Csat& sat, const CUnitText& unit, int T) override;

  void begin_extension(bool to_the_right, const CUnitText& unit, const char* its_end) override;
  decision choose_edit(const extension_state& at, unsigned char depth, int best) override;

  void begin_exact_scan(const exact_scan& scan) override;
  const char* next_start(const char* p) override;
  bool is_known_repeat(Csat& sat) override;
  bool is_worth_storing(const Csat& sat, const CUnitText& unit) override;
  const char* start_after(const Csat& sat, bool is_stored, bool is_covered) override;

 private:
  // The extension under way, in one direction: one look-ahead for all edits, or one for each where the score reduction
  // is finite.
  template <typename Direction>
  struct extension {
    CEditChoice<Direction> choice;
    CLookAhead<Direction> look_ahead;
  };

  symbol_range window_of_starts() const;

  shortcut_switches switches;
  const search_settings* settings = nullptr;
  CAlignmentPrograms programs;
  CRecordPool pool;
  std::optional<CCandidateFilter> filter;
  std::optional<CCandidateQueue> queue;

  edit_choice_space choice_space;
  look_ahead_workspace look_ahead_space;
  std::optional<extension<rightwards>> right;
  std::optional<extension<leftwards>> left;
  int unit_length = 0;
  bool are_little_scores_kept = false;  // then most walks are near the floor

  bool is_soon_looked_ahead(const extension_state& at) const;
  template <typename Direction>
  decision choose(extension<Direction>& side, const extension_state& at, unsigned char depth, int best);

  std::optional<CExactStarts> starts;
  bool is_known = false;  // the repeat in hand, from one before
};
