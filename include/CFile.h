#pragma once

#include <string_view>

#include "CByteSource.h"

// The input file, plain or compressed, read in large blocks and handed out a byte at a time with one byte of push-back.
//
// Every line end (LF, CR LF, lone CR) arrives as one '\n' and is counted in `line`. The state of the file is in the
// `status` flags alone; nothing is thrown but std::bad_alloc. One byte of history survives every refill, so that
// ungetchar works across a block border.
//
// A file that cannot be read to its end is not at its end: `status` fails without the end-of-file flag, and `fault`
// says why. A directory reads as an empty file.
//
// Not copyable; large (the buffer is a member), so create it on the heap.
class CFile : public CByteSource {
 public:
  static constexpr unsigned buffer_size = 1000000;

  // Flags of `status`. A set fail bit without the end-of-file bit means an error.
  static constexpr signed char end_of_file = 1;
  static constexpr signed char good_state = 2;
  static constexpr signed char fail_state = 4;

  char buffer[buffer_size];
  char* buffer_end = buffer;
  char* buffer_pos = buffer;
  signed char status = fail_state;
  unsigned line = 1;

  // Bytes of `buffer` in use, at least 2 and at most buffer_size. Smaller blocks exist for tests of block borders.
  unsigned block_size = buffer_size;

  // Opens the file for reading; `status` says whether that worked.
  void open(const char* name) {
    CByteSource::open(name);
    status = good_state;
    if (!is_open() || fail()) status = fail_state;
    line = 1;
    buffer_pos = buffer_end = buffer;
  }

  bool has_failed() const { return (status & fail_state) != 0; }
  bool at_end_of_file() const { return (status & end_of_file) != 0; }

  // The text that follows, as far as it has been read from the file; until the next byte is fetched.
  std::string_view text_at_hand() const { return {buffer_pos, static_cast<std::size_t>(buffer_end - buffer_pos)}; }

  // The next raw byte (0 to 255), or 0 at the end of the file. No line ends are folded or counted.
  int getchar_intern() {
    if (buffer_pos == buffer_end && !refill()) return 0;
    return static_cast<unsigned char>(*buffer_pos++);
  }

  // The next byte with every kind of line end as one '\n', or 0 at the end of the file.
  int getchar() {
    const int c = getchar_intern();
    if (static_cast<signed char>(c) > '\r') return c;
    if (has_failed()) return c;
    if (c == '\r') {
      buffer_pos[-1] = '\n';
      const int next = getchar_intern();
      if (next != '\n' && !has_failed()) ungetchar();
      ++line;
      return '\n';
    }
    if (c == '\n') ++line;
    return c;
  }

  // Pushes the byte fetched last back. Impossible, and a failure, before the first byte of the file.
  void ungetchar() {
    if (buffer_pos == buffer) {
      set_fail();
      return;
    }
    if (buffer_pos[-1] == '\n' && !has_failed()) --line;
    --buffer_pos;
  }

  // Reads a compressed file on to its end, so that `fault` says whether it is intact: corrupt data may look like a
  // format error long before their checksum is met. Nothing can be fetched afterwards.
  void look_for_faults() {
    while (is_compressed() && read(buffer, block_size) != 0) continue;
  }

 private:
  void set_fail() { status = static_cast<signed char>((status & ~good_state) | fail_state); }

  // Reads the next block after one byte of history. Returns false when the file has failed or is at its end.
  bool refill() {
    const unsigned kept = buffer_pos != buffer ? 1 : 0;
    if (kept != 0) buffer[0] = buffer_pos[-1];
    const std::streamsize count = read(buffer + kept, static_cast<std::streamsize>(block_size - kept));
    if (count == 0) end_reading();
    buffer_pos = buffer + kept;
    buffer_end = buffer_pos + count;
    return !has_failed();
  }

  void end_reading() {
    status = static_cast<signed char>((status & ~7) | fail_state | (fault == nullptr ? end_of_file : 0));
  }
};
