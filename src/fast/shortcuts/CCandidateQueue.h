#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "CAnchorSeq.h"
#include "candidate-filter.h"
#include "run-filter.h"

// The candidates of one unit length that a search need look at, one after the other.
//
// The filter's candidates that the mask admits are put to the filter's tighter test in batches. What that test says
// depends on the sequence alone, so it does not matter that candidates are given out later than they are collected.
// What the mask admits does change meanwhile: it closes where a repeat is accepted, and opens again at its edits. So
// after a repeat was accepted all candidates of the rest of the batch are asked for again, and those that the mask had
// refused are given out untested:
//
//   collected   p1 tested, p2 refused by the mask, p3 tested, p4 refused | p1 kept, p3 not
//   given out   p1 -> accepted: the mask has changed -> p2, which the mask admits now; never p3; nor p4, still refused
class CCandidateQueue {
 public:
  // For the candidates of a filter whose first position is its_begin, as far as they lie in `starts`, in a record that
  // ends at its_end; with `is_tighter` off, the tighter test is left out. All must outlive the queue.
  CCandidateQueue(CCandidateFilter& its_filter, const char* its_begin, const symbol_range& its_starts,
                  const char* its_end, bool is_tighter)
      : filter(its_filter),
        begin(its_begin),
        starts(its_starts),
        end(its_end),
        has_tighter_test(is_tighter),
        changes(changes_of_symbol(begin, std::min(end, starts.end + 1))) {}

  // The first candidate of unit length L, and the next after the last; nullptr when there is none. Says with
  // `was_accepted` whether the one given last was.
  const char* first(unsigned its_L, const CAnchorSeq& its_mask);
  const char* next(bool was_accepted);

  // Whether the one given last has passed the tighter test.
  bool is_given_one_tested() const { return has_passed; }

 private:
  CCandidateFilter& filter;
  const char* begin;
  symbol_range starts;
  const char* end;
  bool has_tighter_test;
  std::vector<std::uint64_t> changes;  // of the symbol
  unsigned L = 0;
  bool is_tested_again = false;
  std::uint64_t pairs_of_unit = 0;  // a bit for each symbol of the unit but the last, 64 at most
  const CAnchorSeq* mask = nullptr;
  const CPositionSet* candidates = nullptr;
  std::size_t first_start = 0;   // positions here count from `begin`
  std::size_t after_starts = 0;  // of starts whose unit is followed by a symbol

  // A walk over the candidates that the mask admits: those left in the word that it has come to.
  std::size_t word = 0;
  std::uint64_t left = 0;

  // A batch: the candidates in front of batch_end, of which some are tested; where giving out has come to.
  std::array<const char*, CBatchBound::most_candidates> tested{};
  std::size_t count = 0;
  std::size_t given = 0;
  std::uint64_t kept = 0;  // of the tested ones
  std::size_t batch_end = 0;
  const char* last_given = nullptr;
  bool has_mask_changed = false;
  bool has_passed = false;
  std::size_t run_end = 0;  // where the symbol looked at last stops being repeated

  bool collect();
  void collect_from_word();
  bool is_change_ahead(std::size_t p) const;
  const char* next_tested();
  const char* next_admitted_of_batch();

  void walk_from(std::size_t p);
  bool walks_past(std::size_t p);
  bool has_admitted();
  std::size_t next_admitted();
  std::uint64_t admitted(std::size_t in_word) const { return admitted_of(L, in_word, candidates->word(in_word)); }
  std::uint64_t admitted_of(unsigned any_L, std::size_t in_word, std::uint64_t bits) const;
  std::size_t after_starts_of(unsigned any_L) const;
  std::size_t first_unit_from(std::size_t p);
};
