#pragma once

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "alignment-kernels.h"
#include "batch-bound.h"
#include "bit-planes.h"
#include "position-set.h"
#include "sieve-plan.h"

// Short records tested together by the compiled programs.
//
// A record of 100 symbols fills a fifth of the lanes of a program, and its bit planes are nearly all margin. So the
// records that follow in the file, as far as their text is at hand, are laid end to end behind the one that is asked
// for, and each program runs over all of them once, when the first of them asks for it. What a program keeps holds for
// whatever symbols lie beyond the ends of a record (alignment-program.h), so a neighbour may lie there.
//
//   record in hand  text after it                     symbols                  kept by a program, its part of each
//   ACCACCAC        >b\nGATTACAGATTACA\n>c\nTT...     ACCACCACGATTACAGATTACA   [0, 8) now, [8, 22) for b
//
// That text is a guess of what will be searched next, and nothing more: a record is known by its symbols, all of which
// are compared, and where it is not the one that was expected, the symbols are laid out anew.
//
// Memory: some 32768 symbols, their planes, and a bit a symbol for each program.
class CRecordPool {
 public:
  // The text of a FASTA file after the record that is searched next, as far as it is at hand, or none. It must last
  // until that search has ended.
  void announce(std::string_view its_text_ahead) { text_ahead = its_text_ahead; }

  // Adds the candidates of the record, of longest_short_record symbols at most, that the kernel keeps.
  void place(const alignment_kernel& kernel, const symbol_range& record, CPositionSet& kept);

 private:
  // Enough for the borders of the lanes to weigh little.
  static constexpr std::size_t wanted_symbols = 64 * CBitPlanes::lanes;

  struct part {
    std::size_t begin;
    std::size_t length;
  };

  std::string_view text_ahead;
  std::vector<char> symbols;
  std::size_t used = 0;
  std::vector<part> parts;
  std::size_t current = 0;  // the part that was asked for last
  CBitPlanes planes;
  CBatchBound batch;
  std::vector<std::pair<const alignment_kernel*, CPositionSet>> tested;

  bool is_part(std::size_t index, const symbol_range& record) const;
  void find(const symbol_range& record);
  void lay_out(const symbol_range& record);
  void add(std::size_t length);
  const char* add_from_text(const char* header);
  void test_again(const alignment_bound& bound, CPositionSet& kept);
  const CPositionSet& kept_of_all(const alignment_kernel& kernel);
};
