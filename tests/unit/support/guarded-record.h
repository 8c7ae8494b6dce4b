#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <new>
#include <string>

#include "CSequence_Mol.h"

// Memory between two pages that cannot be read: whoever goes beyond it ends the process with a segmentation fault.
class CGuardedMemory {
 public:
  explicit CGuardedMemory(std::size_t bytes) : size((bytes + page() - 1) / page() * page()) {
    void* const all = mmap(nullptr, size + 2 * page(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) throw std::bad_alloc();
    first_page = static_cast<char*>(all);
    if (size != 0 && mprotect(begin(), size, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
  }
  CGuardedMemory(const CGuardedMemory&) = delete;
  CGuardedMemory& operator=(const CGuardedMemory&) = delete;
  ~CGuardedMemory() { munmap(first_page, size + 2 * page()); }

  char* begin() const { return first_page + page(); }
  char* end() const { return begin() + size; }

  static std::size_t page() {
    static const auto bytes = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return bytes;
  }

 private:
  std::size_t size;
  char* first_page;
};

enum class guarded_side { begin, end };

// A record whose symbols begin directly after an unreadable page, or end directly in front of one; both, when they
// fill whole pages. The rest of their pages holds a symbol that would show in the results.
class CGuardedRecord : public CSequence_Mol {
 public:
  CGuardedRecord(const std::string& text, guarded_side side) : CSequence_Mol(1, 'N'), memory(text.size()) {
    std::memset(memory.begin(), 'A', static_cast<std::size_t>(memory.end() - memory.begin()));
    symbols.buffer = side == guarded_side::begin ? memory.begin() : memory.end() - text.size();
    symbols.length = static_cast<unsigned>(text.size());
    symbols.capacity = symbols.length;
    if (!text.empty()) std::memcpy(symbols.buffer, text.data(), text.size());
    full_name.assign("guarded");
    short_name.assign("guarded");
  }
  CGuardedRecord(const CGuardedRecord&) = delete;
  CGuardedRecord& operator=(const CGuardedRecord&) = delete;
  // The memory is not the string's to free.
  ~CGuardedRecord() { symbols.buffer = nullptr; }

 private:
  CGuardedMemory memory;
};
