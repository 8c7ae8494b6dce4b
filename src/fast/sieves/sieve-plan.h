#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <map>
#include <span>
#include <tuple>

#include "alignment-kernels.h"
#include "alignment-program.h"
#include "scoring.h"

// Which sieves the candidates of a unit length go through: the first row of the table that serves, of which a search
// and bench/sieve-plan read the same.

// Alignment programs that were made, for all records of a run.
class CAlignmentPrograms {
 public:
  const alignment_program& program_for(const alignment_bound& bound);

 private:
  std::map<std::tuple<unsigned, int, int, int, int>, alignment_program> made;
};

// The bound of a unit length with the minimum score T.
alignment_bound bound_of(const scoring& rules, unsigned L, int T);

// What a plan depends on.
struct sieve_question {
  alignment_bound bound;
  std::size_t record_length;
  std::size_t reach;    // symbols at hand on each side of a candidate, where a window of the record is searched
  bool has_strange_Ns;  // there are N's, and they match nothing
  CAlignmentPrograms& programs;

  static constexpr auto whole_record = std::numeric_limits<std::size_t>::max();

  // Interpreted programs pay when all of their lanes are in use; a short record is tested exactly at once where no
  // kernel serves.
  bool is_short() const;
  const alignment_kernel* kernel() const;
  bool is_at_hand(int distance) const { return static_cast<std::size_t>(distance) <= reach; }
};

enum class first_sieve { nothing, kernel, program, batches, windows, potential, everything };

struct sieve_row {
  first_sieve first;  // what finds the candidates
  const char* name;   // of it
  bool (*serves)(const sieve_question&);
  bool has_clusters;      // what it finds lies close together, and is tested so
  bool is_tested_again;   // in batches, when the candidates are asked for
  const char* condition;  // when it serves, in words
};

std::span<const sieve_row> sieve_rows();

struct sieve_plan {
  const sieve_row* row;
  std::array<unsigned, 2> clusters;  // their sizes, powers of two, in turn; 0 is none
  bool is_tested_again;

  first_sieve first() const { return row->first; }
};

sieve_plan plan_sieves(const sieve_question& question);

// Candidates with longer units are neither tested again in batches nor one by one: to extend them costs less, since
// their extensions meet the choices of those before.
inline constexpr unsigned longest_tested_again = 128;

// The longest record that is short.
inline constexpr std::size_t longest_short_record = 1500;
