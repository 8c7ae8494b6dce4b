#ifndef QUARVO_CLINEREADER_H
#define QUARVO_CLINEREADER_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// The lines of a file, one after the other. A line ends with '\n' and may hold any other byte. Memory grows with the
// longest line alone. Not copyable; the destructor closes the file.
class CLineReader {
 public:
  enum class outcome { line, end_of_file, failed };

  CLineReader() = default;
  CLineReader(const CLineReader&) = delete;
  CLineReader& operator=(const CLineReader&) = delete;
  ~CLineReader();

  // Opens the named file. Returns false when that is impossible; trouble() says why.
  bool open(const std::string& name);

  // Takes the next line. `line` means that text() is a whole line, without its end; or, when is_cut(), what stands
  // behind the last line end of the file.
  outcome next();

  // The same, but a line of more than `longest` bytes is cut there, and only bytes up to there are read.
  outcome next_up_to(std::size_t longest);

  std::string_view text() const { return line; }
  // True when the line did not end: the file did, or the limit was reached.
  bool is_cut() const { return cut; }
  // The number of the line taken last, from 1; 0 before the first.
  std::int64_t number() const { return line_number; }
  // Why the file could not be opened or read, as the system says it.
  const std::string& trouble() const { return reason; }

 private:
  std::FILE* file = nullptr;
  std::string line;
  std::string block;
  std::size_t block_pos = 0;
  std::int64_t line_number = 0;
  bool cut = false;
  std::string reason;

  bool refill();
};

#endif
