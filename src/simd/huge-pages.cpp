#include "huge-pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace {

// Below this, clearing whole large pages can cost more than it saves.
constexpr std::size_t least_bytes = std::size_t{4} << 20;

}  // namespace

// Rounded outwards to whole pages: large allocations are mappings of their own and stay one, so that they can still
// grow without being copied.
void prefer_huge_pages(void* begin, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
  if (bytes < least_bytes) return;
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto address = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = address / page * page;
  const std::uintptr_t end = (address + bytes + page - 1) / page * page;
  madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#endif
}
