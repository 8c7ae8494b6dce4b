#pragma once

#include <string_view>

#include "CAnchorSeq.h"
#include "Csat.h"
#include "edit.h"
#include "perfect-run.h"
#include "search-settings.h"
#include "unit-text.h"

// The questions of a search that may be answered sooner than by doing what the search is defined to do.
//
// A search asks them in the places where its time goes. Each has an answer, the one given here, that means "do as
// defined", so that a search with these answers, or without an object of this class, is the definition itself. Other
// answers must lead to the same results. One object serves one search at a time.
class CShortcuts {
 public:
  CShortcuts() = default;
  CShortcuts(const CShortcuts&) = delete;
  CShortcuts& operator=(const CShortcuts&) = delete;
  virtual ~CShortcuts() = default;

  // The text of a FASTA file after the record that is searched next, as far as it is at hand: what may be searched
  // after it. It lasts until that search has ended.
  virtual void announce(std::string_view /*text_ahead*/) {}

  // A search of the symbols [begin, end) begins, or has ended. All of them stay as they are in between.
  virtual void begin_record(const char* its_begin, const char* its_end, const search_settings& /*settings*/) {
    begin = its_begin;
    end = its_end;
    limit_starts(begin, end);
  }
  // Of that search: it asks for starts in [first, after) alone.
  void limit_starts(const char* first, const char* after) {
    first_start = first;
    after_starts = after;
  }
  virtual void end_record() {}

  // Imperfect mode: the first position, and the next after the last, whose unit of L symbols is to be tried; nullptr
  // when there is none. Positions whose candidate the mask refuses or whose extension cannot be accepted may be left
  // out. `was_accepted` says whether the position given last led to a repeat, which the mask then shows.
  virtual const char* first_candidate(unsigned L, const CAnchorSeq& /*mask*/) {
    candidate = first_start;
    last_candidate = end - after_starts > L ? after_starts - 1 : end - L - 1;
    return candidate <= last_candidate ? candidate : nullptr;
  }
  virtual const char* next_candidate(bool /*was_accepted*/) {
    return candidate < last_candidate ? ++candidate : nullptr;
  }

  // Whether the extension of the record can end with a score of T or more; `unit` is the text of its unit.
  virtual bool may_reach(const Csat& /*sat*/, const CUnitText& /*unit*/, int /*T*/) { return true; }

  // An extension begins, to the right up to the position `end` or to the left down to it.
  virtual void begin_extension(bool /*to_the_right*/, const CUnitText& /*unit*/, const char* /*end*/) {}
  // What it does at a mismatch.
  struct decision {
    bool is_made = false;          // otherwise the search decides as defined
    edit chosen = edit::none;      // none: no edit is admissible
    bool returns_to_best = false;  // whatever edits it makes, it ends at its best end so far
  };
  // `depth` is that of the look-aheads less one; `best` the score at the best end.
  virtual decision choose_edit(const extension_state& /*at*/, unsigned char /*depth*/, int /*best*/) { return {}; }

  // Exact search: what it asks for one unit length. Without a mask, for single symbols, no start is refused.
  struct exact_scan {
    unsigned L;
    int min_score;   // of a stored repeat
    int min_length;  // of a stored repeat
    const CAnchorSeq* mask;
    bool is_for_seeds;  // the repeats are stored to be extended, not to be reported
  };
  virtual void begin_exact_scan(const exact_scan& /*scan*/) {}
  // The first start at or after p that need be looked at; nullptr when there is none.
  virtual const char* next_start(const char* p) { return p; }
  // Gives a record the ends that its extension would find, if they are known.
  virtual bool is_known_repeat(Csat& /*sat*/) { return false; }
  // Whether a seed that passes the thresholds need be stored: not if it leaves no trace in the results.
  virtual bool is_worth_storing(const Csat& /*sat*/, const CUnitText& /*unit*/) { return true; }
  // The next start to ask for after that of the record, which was stored or not and whose repeat the mask covers or
  // does not.
  virtual const char* start_after(const Csat& sat, bool /*is_stored*/, bool /*is_covered*/) {
    return sat.unit_begin + 1;
  }

 protected:
  const char* begin = nullptr;  // of the record
  const char* end = nullptr;
  const char* first_start = nullptr;
  const char* after_starts = nullptr;

 private:
  const char* candidate = nullptr;
  const char* last_candidate = nullptr;
};
