#pragma once

#include <algorithm>
#include <cstdio>
#include <list>
#include <memory>

#include "CAnchorSeq.h"
#include "CSequence_Mol.h"
#include "CShortcuts.h"
#include "Csat.h"
#include "CsatContainer.h"
#include "search-settings.h"
#include "search-workspace.h"
#include "unit-tables.h"

// The search for tandem repeats over one sequence: this class and what it is made of define what a repeat is.
//
// A repeat is a stretch of the sequence that can be read as copies of a unit, one of its own stretches of L symbols,
// with few edits. It begins as one copy, its candidate or seed, and is extended to the right and then to the left. Each
// mode is a file: CSearchController-exact.cpp, -imperfect.cpp, -extend-exact.cpp; CSearchController-overlap.cpp thins
// what they find.
//
// A controller lives for one record: one of the searches fills its container, remove_hidden thins it, report_SATList
// writes it; destruction returns all records to their pool. A search depends on the record, the settings and the
// shortcuts of the workspace alone, so searches with workspaces of their own may run at once. The static thresholds and
// the pool sat_alloc are those of a program that searches one record after the other, as the parameters say. Out of
// memory is std::bad_alloc.
class CSearchController {
 public:
  unsigned sequence_number;  // ordinal in the input file
  CSequence_Mol& sequence;
  CsatContainer result_list;  // what the exact search finds
  CsatContainer work_list;    // what the other two searches find

  // Thresholds by unit length, 0 .. global_max_unit_length, made from the parameters by the first controller of a run.
  // The first two are the user's.
  static int* minScores;
  static int* minLengths;
  static int* minScores_user;    // of reported repeats
  static int* minLengths_user;   // of reported repeats
  static int* minScores_intern;  // of the seeds of extend-exact mode
  static int* minLengths_intern;

  // A search as the parameters say, with the pool sat_alloc and without shortcuts.
  CSearchController(unsigned number, CSequence_Mol& record);
  // A search with these settings. All references must outlive the controller.
  CSearchController(unsigned number, CSequence_Mol& record, const search_settings& its_settings,
                    search_workspace& its_workspace, search_progress its_progress = {}, search_stretch its_starts = {});
  CSearchController(const CSearchController&) = delete;
  CSearchController& operator=(const CSearchController&) = delete;

  // Makes the static thresholds that are missing.
  static void make_minimum_arrays();
  // Forgets them, so that they are made again from the parameters then in force.
  static void reset_minimum_arrays();

  // Finds perfect repeats (N runs tolerated); fills result_list, sorted.
  void exact_search_2();

  // Extends exact seeds to imperfect repeats; fills work_list, sorted, and leaves result_list empty. The other two are
  // its steps: the first fills result_list with seeds, sorted.
  void search_exact_and_extend_to_imperfect_repeats();
  void find_seeds();
  void extend_seeds();

  // Tries every position and unit length as the seed of an imperfect repeat; fills work_list, sorted.
  void complete_imperfect_search(std::FILE* out);

  // Extends a candidate in both directions and gives up the N's at its ends. Changes nothing but the record. Returns
  // whether the repeat passes the thresholds; if not, the record holds nothing of use.
  bool extend_imperfect(Csat& sat);

  // Of two mostly overlapping repeats keeps the one with the higher score, the earlier one of equals. The list must be
  // sorted and stays so. The first does nothing unless global_remove_mostly_hidden is set.
  static void remove_hidden(CsatContainer& list);
  static void remove_mostly_hidden(CsatContainer& list);

  // Writes the record's opening line, its repeats in list order, and its closing line, and flushes the stream.
  void report_SATList(std::FILE* out, const std::list<Csat*>& list);
  // The lines around the repeats. Not for two calls at once, as c_str() of the names writes to them.
  void print_opening_lines(std::FILE* out);
  void print_closing_line(std::FILE* out);

  // What no search mode uses: CSearchController-unused.cpp.

  // A greedy scan from left to right without mask, which writes each repeat as it is found.
  void simple_imperfect_search(std::FILE* out);

  // Extends the right (left) end of a repeat, as the parameters say. Reads the sequence up to seq_end (exclusive), or
  // down to one past seq_stop; changes nothing but the record.
  static void extend_imperfect_forward(Csat& sat, const char* seq_end);
  static void extend_imperfect_backward(Csat& sat, const char* seq_stop);

  // The look-ahead of the extension, as the parameters say: the highest score reachable from the sequence position s,
  // where the unit symbol at u comes next, after best_score was met on the way. To the left the symbol examined is
  // s - 1, down to one past seq_stop.
  static int extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                 const char* unit_end, int score, int unit_length, unsigned char depth,
                                                 const char* seq_end, int best_score);
  static int extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                  const char* unit_end, int score, int unit_length, unsigned char depth,
                                                  const char* seq_stop, int best_score);

 private:
  // What the first constructor gives the second.
  struct defaults {
    search_settings settings;
    search_workspace workspace;
  };
  std::unique_ptr<defaults> own;
  CSearchController(unsigned number, CSequence_Mol& record, std::unique_ptr<defaults> its_own);

  const search_settings& settings;
  search_workspace& workspace;
  search_progress progress;
  search_stretch starts;
  CShortcuts as_defined;
  CShortcuts& shortcuts;

  // While one lives, the shortcuts know the record.
  class CRecordInHand {
   public:
    explicit CRecordInHand(CSearchController& its_search) : search(its_search) {
      search.shortcuts.begin_record(search.seq_begin(), search.seq_end(), search.settings);
      search.shortcuts.limit_starts(search.first_start(), search.after_starts());
    }
    CRecordInHand(const CRecordInHand&) = delete;
    CRecordInHand& operator=(const CRecordInHand&) = delete;
    ~CRecordInHand() { search.shortcuts.end_record(); }

   private:
    CSearchController& search;
  };

  // Tells when a scan has come far enough for another look at the clock.
  class CPoll {
   public:
    explicit CPoll(const char* begin) : polled(begin) {}
    bool is_due(const char* p) {
      if (p - polled < 256) return false;
      polled = p;
      return true;
    }

   private:
    const char* polled;
  };

  const char* seq_begin() const { return sequence.symbols.buffer; }
  const char* seq_end() const { return sequence.symbols.buffer + sequence.symbols.length; }
  // The positions at which a unit may start.
  const char* first_start() const { return seq_begin() + std::min(starts.begin, sequence.symbols.length); }
  const char* after_starts() const { return seq_begin() + std::min(starts.end, sequence.symbols.length); }
  // A mask as far as units that start there look at it.
  CAnchorSeq make_mask() const;

  void report_progress(unsigned unit_length) const {
    if (progress.unit_length) progress.unit_length(unit_length);
  }
  void tell_step(const char* text) const {
    if (progress.step) progress.step(text);
  }

  // Whether the repeat passes the thresholds of reported repeats.
  bool is_reportable(const Csat& sat) const;
  bool is_candidate(const char* p, unsigned L) const;
  // The unit of the record in hand, until the next call.
  const CUnitText& unit_text_of(const Csat& sat);

  enum exact_purpose { for_report, for_seeds };
  struct exact_pass;
  void search_exact(exact_purpose purpose);
  void exact_search_of_unit_length_1(exact_pass& pass);
  void exact_search_of_unit_length(unsigned L, exact_pass& pass);
  void begin_exact_scan(unsigned L, const exact_pass& pass);
  void extend_exact(Csat& sat);
  bool passes_thresholds(const Csat& sat, const exact_pass& pass) const;
  bool is_stored(const Csat& sat, const exact_pass& pass);
  bool is_covered(const Csat& sat, const exact_pass& pass) const;

  // extend_imperfect, where it is known that it may pass.
  bool extend_both_ways(Csat& sat, const CUnitText& unit);

  bool try_candidate(const char* p, unsigned L, CAnchorSeq& mask, CSpareSat& spare, CsatContainer& found);
  void try_candidates(unsigned L, CAnchorSeq& mask, CsatContainer& found);
  void unit_len_1_complete_imperfect_search(CAnchorSeq& mask, CsatContainer& found);
  void one_unit_len_complete_imperfect_search(unsigned L, CAnchorSeq& mask, CsatContainer& found);

  bool simple_search_at(const char* p, const char* left_stop, CSpareSat& spare);
};
