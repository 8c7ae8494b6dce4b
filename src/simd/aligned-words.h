#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

// Memory for vectors of every size.
inline constexpr std::align_val_t vector_alignment{128};

struct aligned_words_deleter {
  void operator()(std::uint64_t* words) const { ::operator delete(words, vector_alignment); }
};
using aligned_words = std::unique_ptr<std::uint64_t, aligned_words_deleter>;

// Null if there is not so much memory.
inline aligned_words allocate_words(std::size_t count) {
  return aligned_words(
      static_cast<std::uint64_t*>(::operator new(count * sizeof(std::uint64_t), vector_alignment, std::nothrow)));
}
