#ifndef QUARVO_CSEARCHCONTROLLER_H
#define QUARVO_CSEARCHCONTROLLER_H

#include <cstdint>
#include <cstdio>
#include <functional>
#include <list>
#include <vector>

#include "CAnchorSeq.h"
#include "CSequence_Mol.h"
#include "Csat.h"
#include "CsatContainer.h"
#include "unit-tables.h"

class CCandidateFilter;
class CUnitText;

// Called again and again while a search is under way, with the unit length it has come to.
using search_progress = std::function<void(unsigned unit_length)>;

// The search for tandem repeats over one sequence.
//
// A controller lives for one record: one of the searches fills its container, remove_hidden thins it, report_SATList
// writes it; destruction returns all records to the pool. The thresholds are static, made from the parameters by the
// first controller of a run. Not for use by several threads. Out of memory is std::bad_alloc.
class CSearchController {
 public:
  unsigned sequence_number;  // ordinal in the input file, for progress lines
  CSequence_Mol& sequence;
  CsatContainer result_list;  // what the exact search finds
  CsatContainer work_list;    // what the other two searches find

  // Thresholds by unit length, 0 .. global_max_unit_length. The first two are the ones in force.
  static int* minScores;
  static int* minLengths;
  static int* minScores_user;    // of reported repeats
  static int* minLengths_user;   // of reported repeats
  static int* minScores_intern;  // of the seeds of extend-exact mode
  static int* minLengths_intern;

  CSearchController(unsigned number, CSequence_Mol& record, search_progress its_progress = nullptr);
  CSearchController(const CSearchController&) = delete;
  CSearchController& operator=(const CSearchController&) = delete;

  // Forgets the thresholds, so that the next controller makes them from the parameters then in force.
  static void reset_minimum_arrays();

  // Finds perfect repeats (N runs tolerated); fills result_list, sorted.
  void exact_search_2();

  // Extends exact seeds to imperfect repeats; fills work_list, sorted, and leaves result_list empty.
  void search_exact_and_extend_to_imperfect_repeats();

  // Tries every position and unit length as the seed of an imperfect repeat; fills work_list, sorted.
  void complete_imperfect_search(std::FILE* out);

  // A greedy scan from left to right without mask, which writes each repeat as it is found. No search mode uses it.
  void simple_imperfect_search(std::FILE* out);

  // Of two mostly overlapping repeats keeps the one with the higher score, the earlier one of equals. The list must be
  // sorted and stays so. Does nothing unless global_remove_mostly_hidden is set.
  static void remove_hidden(CsatContainer& list);

  // Writes the record's opening line, its repeats in list order, and its closing line, and flushes the stream.
  void report_SATList(std::FILE* out, const std::list<Csat*>& list);

  // Pushes the right (left) end of a repeat outwards through edits to its best-scoring end point. Reads the sequence up
  // to seq_end (exclusive), or down to behind seq_stop (exclusive); changes nothing but the record.
  static void extend_imperfect_forward(Csat& sat, const char* seq_end);
  static void extend_imperfect_backward(Csat& sat, const char* seq_stop);

  // Extends a candidate or seed in both directions and gives up the N's at its ends. Reads the sequence, the parameters
  // and the thresholds in force; changes nothing but the record. Returns whether the repeat passes the thresholds; if
  // not, the record holds nothing of use.
  bool extend_imperfect(Csat& sat) const;

  // The look-ahead of the extension: the highest score reachable from the sequence position s, where the unit symbol at
  // u comes next, after best_score was met on the way. To the left the symbol examined is s - 1, down to seq_stop.
  static int extend_imperfect_forward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                 const char* unit_end, int score, int unit_length, unsigned char depth,
                                                 const char* seq_end, int best_score);
  static int extend_imperfect_backward_leap_ahead(const char* s, const char* u, const char* unit_begin,
                                                  const char* unit_end, int score, int unit_length, unsigned char depth,
                                                  const char* seq_stop, int best_score);

 private:
  const char* seq_begin() const { return sequence.symbols.buffer; }
  const char* seq_end() const { return sequence.symbols.buffer + sequence.symbols.length; }

  search_progress progress;
  void report_progress(unsigned unit_length);

  static bool passes_thresholds(const Csat& sat);
  static bool passes_user_thresholds(const Csat& sat);

  struct exact_pass;
  void run_exact_pass(exact_pass& pass);
  void exact_search_of_unit_length_1(exact_pass& pass);
  void exact_search_of_unit_length(unsigned L, exact_pass& pass);
  // Like exact_search_2, without seeds whose imperfect extension cannot reach the user's score.
  void exact_search_for_seeds();
  bool is_wanted(const Csat& sat, exact_pass& pass) const;
  static bool wants_every_start(const Csat& sat, const exact_pass& pass);
  // The unit of the candidate in hand, for all extensions of it: one search runs at a time.
  static const CUnitText& unit_text_of(const Csat& sat);
  bool may_be_accepted(const Csat& seed) const;
  bool extend_seed(Csat& sat) const;

  // Extends the candidate unit [p, p + L) if it may be anchored; if accepted, covers it in the mask and appends it.
  // Changes nothing otherwise. Returns whether it was accepted.
  bool try_candidate(const char* p, unsigned L, CAnchorSeq& mask, CSpareSat& spare, CsatContainer& found);
  void unit_len_1_complete_imperfect_search(CCandidateFilter& filter, CAnchorSeq& mask, CsatContainer& found);
  void one_unit_len_complete_imperfect_search(unsigned L, CCandidateFilter& filter, CAnchorSeq& mask,
                                              CsatContainer& found);
  bool is_candidate(const char* p, unsigned L) const;
  void try_candidates(unsigned L, CCandidateFilter& filter, CAnchorSeq& mask, CsatContainer& found);

  // Leaves the first passing repeat that starts at p in the spare record; its left end stays behind left_stop.
  bool simple_search_at(const char* p, const char* left_stop, CSpareSat& spare);

  void print_opening_lines(std::FILE* out);
  void print_closing_line(std::FILE* out);
};

#endif
