// The repeat record and the search controller.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <list>
#include <utility>
#include <vector>

#include "reader.h"

// One tandem repeat. All pointers point into the symbols of the record being searched.
struct Csat {
  const char* pos_left = nullptr;
  const char* pos_right = nullptr;
  const char* fwd_unit_cursor = nullptr;
  const char* bwd_unit_cursor = nullptr;
  const char* unit_begin = nullptr;
  const char* unit_end = nullptr;
  int score = 0;
  int mismatches = 0;
  int insertions = 0;
  int deletions = 0;
  int number_of_Ns = 0;
  std::uint8_t recursion_depth = 0;
  std::vector<std::pair<const char*, char>> missense;  // position, and 'M', 'I' or 'D'

  void set_up(const char* begin, const char* end);  // a single copy of the unit [begin, end)
  int unit_length() const { return static_cast<int>(unit_end - unit_begin); }
  int length() const { return static_cast<int>(pos_right - pos_left) - insertions + deletions; }
  float perfection() const;

  // The unit as reported; false if it is a repetition of a shorter unit.
  bool reported_unit(std::string& unit) const;
  void report_sat(FILE* out, const CSequence_Mol& seq) const;
  void print_alignment(FILE* out, const char* left_flank, const char* right_flank_end) const;
};

// The searches take a record, extend it and keep it only if it is accepted: a list of at most one
// record, from which an accepted record is spliced into the list of results.
using spare_record = std::list<Csat>;

// One byte for each symbol, 'a' free to anchor a unit, ' ' inside a repeat; a free guard at each side.
class CAnchorSeq {
 public:
  explicit CAnchorSeq(std::size_t length) : buffer(length + 3, 'a') { buffer[length + 2] = '\0'; }
  char* mask_begin() { return buffer.data() + 1; }
  void reset() { std::fill(buffer.begin(), buffer.end() - 1, 'a'); }

 private:
  std::vector<char> buffer;
};

class CSearchController {
 public:
  unsigned sequence_number;
  const CSequence_Mol& sequence;
  std::list<Csat> result_list;
  std::list<Csat> work_list;

  CSearchController(unsigned number, const CSequence_Mol& seq);

  void exact_search_2();
  void search_exact_and_extend_to_imperfect_repeats();
  void complete_imperfect_search();
  static void remove_hidden(std::list<Csat>& list);
  void report_SATList(FILE* out, const std::list<Csat>& list) const;

 private:
  const char* seq_begin;
  const char* seq_end;

  static std::vector<int> minScores_user, minLengths_user, minScores_intern, minLengths_intern;
  static const std::vector<int>*minScores, *minLengths;

  bool passes_thresholds(const Csat& sat) const;
  void report_progress_if_due(unsigned unit_length) const;
  void exact_mononucleotide_pass(spare_record& spare);
  void exact_pass(unsigned unit_length, CAnchorSeq& anchors, spare_record& spare);
  void unit_len_1_complete_imperfect_search(CAnchorSeq& anchors);
  void one_unit_len_complete_imperfect_search(unsigned unit_length, CAnchorSeq& anchors);
  void extend_and_keep_imperfect(const char* p, unsigned unit_length, CAnchorSeq& anchors, spare_record& spare);
};

void print_output_format(FILE* out, const char* prefix);

// Progress lines, polled by the searches.
void report_status(unsigned number, const char* name, unsigned length, char mark);
bool check_report_status();
