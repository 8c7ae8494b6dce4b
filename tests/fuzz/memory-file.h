#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

// A file in memory that can be opened by name.
class CMemoryFile {
 public:
  explicit CMemoryFile(const std::string& bytes) : descriptor(memfd_create("fuzz", MFD_CLOEXEC)) {
    const bool is_written =
        descriptor >= 0 && write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    if (!is_written) std::abort();
  }
  CMemoryFile(const CMemoryFile&) = delete;
  CMemoryFile& operator=(const CMemoryFile&) = delete;
  ~CMemoryFile() { close(descriptor); }

  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor); }

 private:
  int descriptor;
};
