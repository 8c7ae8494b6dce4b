#include "bgzf-stream.h"

#include <fcntl.h>
#include <htslib/bgzf.h>
#include <htslib/hts_log.h>
#include <unistd.h>

#include <algorithm>

namespace {

// Such a stream takes 0 for an error.
ssize_t write_bytes(void* file, const char* bytes, std::size_t size) {
  return std::max(bgzf_write(static_cast<BGZF*>(file), bytes, size), ssize_t{0});
}

int close_file(void* file) { return bgzf_close(static_cast<BGZF*>(file)); }

}  // namespace

std::FILE* open_bgzf_stream(int descriptor, int threads) {
  hts_set_log_level(HTS_LOG_OFF);  // the program tells of errors itself
  const int copy = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  if (copy < 0) return nullptr;
  BGZF* const file = bgzf_dopen(copy, "w");
  if (file == nullptr) {
    close(copy);
    return nullptr;
  }
  if (threads > 1) bgzf_mt(file, threads, 64);
  std::FILE* const stream = fopencookie(file, "w", {nullptr, write_bytes, nullptr, close_file});
  if (stream == nullptr) bgzf_close(file);
  return stream;
}
