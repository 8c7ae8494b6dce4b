#pragma once

#include <cstddef>

// Vector paths of the FASTA reader for the bytes that nearly all files consist of. Every other byte is left to the
// reader. Free of state, so safe for several threads.

// What copy_symbol_lines did.
struct copied_lines {
  std::size_t consumed;   // bytes taken from the front of the input
  std::size_t stored;     // symbols written
  std::size_t line_ends;  // LF's among the bytes taken: consumed == stored + line_ends
};

// Copies plain symbols (A, C, G, T, U and N in either case) in upper case, U as T, and drops line feeds that have a
// plain symbol after them. Stops in front of the first byte that is neither, or earlier: some bytes at the end of the
// input, fewer than 64, are always left. Writes `stored` symbols; the bytes after them, up to `count` in all, may be
// overwritten. The ranges [from, from + count) and [to, to + count) must not overlap.
copied_lines copy_symbol_lines(const char* from, std::size_t count, char* to);

// The first LF or CR in [begin, end), or end.
const char* find_line_end(const char* begin, const char* end);
