#ifndef QUARVO_CFILE_H
#define QUARVO_CFILE_H

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

// The input file, read in large blocks and handed out a byte at a time with one byte of push-back.
//
// Every line end (LF, CR LF, lone CR) arrives as one '\n' and is counted in `line`. The state of the file is in the
// `status` flags alone; nothing here throws. One byte of history survives every refill, so that ungetchar works across
// a block border.
//
// A file that cannot be read to its end is not at its end: `status` fails without the end-of-file flag, and `trouble`
// says why. A directory reads as an empty file.
//
// Not copyable; large (the buffer is a member), so create it on the heap.
class CFile : public std::ifstream {
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

  // Why the file could not be read to its end, a text that lasts until the next system error, or null.
  const char* trouble = nullptr;

  // Bytes of `buffer` in use, at least 2 and at most buffer_size. Smaller blocks exist for tests of block borders.
  unsigned block_size = buffer_size;

  // Opens the file for reading; `status` says whether that worked.
  void open(const char* name) {
    std::ifstream::open(name);
    status = good_state;
    if (!is_open() || std::ifstream::fail()) status = fail_state;
    line = 1;
    buffer_pos = buffer_end = buffer;
    trouble = nullptr;
    bytes_read = 0;
    bytes_expected = size_when_opened();
  }

  bool has_failed() const { return (status & fail_state) != 0; }
  bool at_end_of_file() const { return (status & end_of_file) != 0; }

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

 private:
  std::streamoff bytes_read = 0;
  std::streamoff bytes_expected = 0;  // the size of the file when it was opened; 0 where there is none, as of a pipe

  std::streamoff seek(std::ios_base::seekdir from) { return rdbuf()->pubseekoff(0, from, std::ios_base::in); }

  std::streamoff size_when_opened() {
    const std::streamoff size = seek(std::ios_base::end);
    if (size > 0) seek(std::ios_base::beg);
    return std::max<std::streamoff>(size, 0);
  }

  void set_fail() { status = static_cast<signed char>((status & ~good_state) | fail_state); }

  // Reads the next block behind one byte of history. Returns false when the file has failed or is at its end.
  bool refill() {
    const unsigned kept = buffer_pos != buffer ? 1 : 0;
    if (kept != 0) buffer[0] = buffer_pos[-1];
    const std::streamsize count = read_block(buffer + kept, static_cast<std::streamsize>(block_size - kept));
    bytes_read += count;
    if (count == 0) end_reading();
    buffer_pos = buffer + kept;
    buffer_end = buffer_pos + count;
    return !has_failed();
  }

  // Returns the number of bytes read. What came before an error is in its place, but the stream does not count it; the
  // position in the file does. The stream stays bad behind an error.
  std::streamsize read_block(char* to, std::streamsize size) {
    errno = 0;
    std::ifstream::read(to, size);
    const int error = errno;
    if (!std::ifstream::bad()) return std::ifstream::gcount();
    if (error == EISDIR) {
      std::ifstream::clear();
      bytes_expected = 0;
      return 0;
    }
    if (trouble == nullptr) trouble = error != 0 ? std::strerror(error) : "It cannot be read";
    return std::clamp<std::streamoff>(seek(std::ios_base::cur) - bytes_read, 0, size);
  }

  void end_reading() {
    if (trouble == nullptr && bytes_read < bytes_expected) trouble = "It has become shorter while it was read";
    status = static_cast<signed char>((status & ~7) | fail_state | (trouble == nullptr ? end_of_file : 0));
  }
};

#endif
