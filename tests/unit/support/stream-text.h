#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

// A stream whose text is kept in memory.
class CStreamText {
 public:
  CStreamText() : out(open_memstream(&bytes, &size)) {}
  CStreamText(const CStreamText&) = delete;
  CStreamText& operator=(const CStreamText&) = delete;
  ~CStreamText() {
    std::fclose(out);
    std::free(bytes);
  }

  std::FILE* stream() const { return out; }

  std::string text() const {
    std::fflush(out);
    return {bytes, size};
  }

 private:
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* out;
};

// What `write(stream)` writes.
template <typename Writer>
std::string text_of(Writer write) {
  const CStreamText memory;
  write(memory.stream());
  return memory.text();
}
