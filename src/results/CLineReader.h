#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "CByteSource.h"

// The lines of a file, plain or compressed, one after the other. A line ends with '\n' and may hold any other byte.
// Memory grows with the longest line alone. Not copyable.
class CLineReader {
 public:
  enum class outcome { line, end_of_file, failed };

  // Opens the named file. Returns false when that is impossible; error() says why.
  bool open(const std::string& name);

  // Takes the next line. `line` means that text() is a whole line, without its end; or, when is_cut(), what stands
  // after the last line end of the file.
  outcome next();

  // The same, but a line of more than `longest` bytes is cut there, and only bytes up to there are read.
  outcome next_up_to(std::size_t longest);

  // Valid until the next line is taken.
  std::string_view text() const { return line; }
  // True when the line did not end: the file did, or the limit was reached.
  bool is_cut() const { return cut; }
  // The number of the line taken last, from 1; 0 before the first.
  std::int64_t number() const { return line_number; }
  // Why the file could not be opened, or not be read to its end.
  const std::string& error() const { return reason; }
  // See CByteSource; known when a line has been taken.
  const char* foreign_kind() const { return source.foreign_kind(); }

 private:
  CByteSource source;
  std::string block;
  std::size_t block_pos = 0;
  std::string line;
  std::int64_t line_number = 0;
  bool cut = false;
  std::string reason;

  bool refill();
};
