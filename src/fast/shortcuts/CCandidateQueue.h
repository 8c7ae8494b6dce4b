#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "CAnchorSeq.h"
#include "candidate-filter.h"

// The candidates of one unit length that a search need look at, one after the other.
//
// The filter's candidates are put to its tighter test in batches. What that test says depends on the sequence alone, so
// it does not matter that candidates are given out later than they are collected. Whether a candidate may be anchored
// does change meanwhile: the mask closes where a repeat is accepted, and opens again at its edits. So whoever takes a
// candidate must look at the mask itself, and candidates that the mask refused when they were collected are given out,
// untested, if a repeat was accepted in between:
//
//   collected   p1 tested, p2 refused by the mask, p3 tested | p1 kept, p3 not
//   given out   p1 -> accepted: the mask has changed -> p2, which the mask may admit now; p3 never
class CCandidateQueue {
 public:
  // For the candidates of a filter whose first position is its_begin, as far as they lie in `starts`, in a record that
  // ends at its_end; with `is_tighter` off, the tighter test is left out. All must outlive the queue.
  CCandidateQueue(CCandidateFilter& its_filter, const char* its_begin, const symbol_range& its_starts,
                  const char* its_end, bool is_tighter)
      : filter(its_filter), begin(its_begin), starts(its_starts), end(its_end), has_tighter_test(is_tighter) {}

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
  std::ptrdiff_t L = 0;
  const CAnchorSeq* mask = nullptr;
  const CPositionSet* candidates = nullptr;
  std::size_t position = 0;  // where collecting has come to

  // A batch: what was collected, and where giving out has come to.
  std::array<const char*, 4 * CBatchBound::most_candidates> collected{};
  std::array<const char*, CBatchBound::most_candidates> tested{};
  std::size_t count = 0;
  std::size_t tested_count = 0;
  std::size_t given = 0;
  std::size_t given_tested = 0;
  std::uint64_t kept = 0;  // of the tested ones
  bool has_mask_changed = false;
  bool has_passed = false;

  bool collect();
  bool is_full() const { return count == collected.size() || tested_count == tested.size(); }
  const char* next_position();
};
