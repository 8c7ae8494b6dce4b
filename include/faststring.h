#pragma once

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "huge-pages.h"
#include "out-of-memory.h"

// A growable byte string without bookkeeping beyond its three fields.
//
// Users index `buffer` directly and keep pointers into it, so whoever holds such pointers must not grow the string.
// The contents end in a NUL only directly after c_str(). Growth is by doubling from 4 bytes; a string that would need
// 2^32 bytes or more, or memory that is not there, raises std::bad_alloc. Owns its buffer; not copyable.
class faststring {
 public:
  char* buffer = nullptr;
  unsigned length = 0;
  unsigned capacity = 0;

  faststring() = default;
  faststring(const faststring&) = delete;
  faststring& operator=(const faststring&) = delete;
  ~faststring() { std::free(buffer); }

  // Appends one byte.
  void push_back(char c) {
    if (length == capacity) double_capacity();
    buffer[length++] = c;
  }

  // Makes room for n bytes and a terminating NUL. Never shrinks.
  void reserve(unsigned n) { ensure_capacity(with_terminator(n)); }

  // Makes room for n more bytes, growing by the doubling of push_back.
  void reserve_after(unsigned n) {
    while (capacity - length < n) double_capacity();
  }

  // Replaces the contents with the bytes in [begin, end), which must not lie in this string.
  void assign(const char* begin, const char* end) {
    const auto n = static_cast<unsigned>(end - begin);
    ensure_capacity(with_terminator(n));
    if (n != 0) std::memcpy(buffer, begin, n);
    length = n;
  }

  // Replaces the contents with the NUL-terminated text s.
  void assign(const char* s) { assign(s, s + std::strlen(s)); }

  // Writes a NUL after the contents (the length stays) and returns the buffer.
  const char* c_str() {
    if (length == capacity) ensure_capacity(with_terminator(length));
    buffer[length] = '\0';
    return buffer;
  }

 private:
  static unsigned with_terminator(unsigned n) {
    if (n == std::numeric_limits<unsigned>::max()) throw std::bad_alloc();
    return n + 1;
  }

  void ensure_capacity(unsigned wanted) {
    if (wanted <= capacity) return;
    void* grown = std::realloc(buffer, wanted);
    if (grown == nullptr) raise_out_of_memory();
    buffer = static_cast<char*>(grown);
    capacity = wanted;
    prefer_huge_pages(buffer, capacity);
  }

  void double_capacity() {
    if (capacity > std::numeric_limits<unsigned>::max() / 2) throw std::bad_alloc();
    ensure_capacity(capacity == 0 ? 4 : 2 * capacity);
  }
};
