#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "CLineReader.h"
#include "results-error.h"
#include "results-records.h"

class CTextScanner;

// Reads a results file of the program, output formats 0, 1 and 3, in one pass from its head to its closing line.
//
//   CResultsReader results;
//   if (!results.open("run.results")) ... results.error() ...
//   for (;;) switch (results.next()) { ... }
//
// Every line is checked: text that no run writes there ends the reading with an error. So does a file without its
// closing line, at the place where it ends; what was handed out before is what a failed run has found, and a caller
// must not pass it on as whole results. Cost: linear; memory grows with the longest line and the largest repeat alone.
// Not copyable.
class CResultsReader {
 public:
  enum class item {
    sequence,  // sequence() is the next one; its repeats follow
    repeat,    // repeat() is the next one of sequence(), ordered by start and then by end
    end,       // the closing line, and nothing after it
    failed     // error() says why
  };

  // Opens the named file and reads its head. Returns false when that is impossible; error() then says why.
  bool open(const std::string& name);

  // Reads on. After `end` and `failed` it gives the same again.
  //
  // Format 3 without sequence comments names sequences with repeats only, and two sequences of one name side by side
  // are seen as two only where the second begins before the last repeat of the first.
  item next();

  // Valid until the next call of next(), and for a sequence until the next sequence.
  const results_header& header() const { return its_header; }
  const results_sequence& sequence() const { return its_sequence; }
  const results_repeat& repeat() const { return its_repeat; }

  const results_error& error() const { return its_error; }
  // The line that was read last, from 1.
  std::int64_t line_number() const { return lines->number(); }
  // The whole message for a user: the file's name and the error, with a line end.
  std::string error_text() const;

 private:
  std::string file_name;
  std::unique_ptr<CLineReader> lines;
  results_header its_header;
  results_sequence its_sequence;
  results_repeat its_repeat;
  results_error its_error;
  std::string closing_line_here;  // of the current sequence
  bool is_in_sequence = false;
  bool is_at_end = false;
  bool has_waiting_repeat = false;  // its_repeat was read together with the sequence that it begins
  int last_start = 0;               // of the repeat before, in the same sequence; 0: none
  int last_end = 0;

  item fail(results_error what);
  item fail_here(std::string_view expected);
  // Returns the condition, and fails here where it does not hold.
  bool holds_here(bool condition, std::string_view expected);
  bool next_line();

  item next_outside_sequence();
  item next_inside_sequence();
  item finish();
  bool read_length(CTextScanner& scanner);
  bool begin_block();
  bool begin_commented_block();
  void begin_sequence();
  bool read_repeat();
  bool read_alignment();
  item next_table_line();
  item checked_repeat();
  bool is_in_order() const;
};
