#include "CBlockFeed.h"

#include <fcntl.h>
#include <htslib/bgzf.h>
#include <htslib/hts_log.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

namespace {

constexpr std::size_t piece = std::size_t{1} << 18;

// Returns false when nobody reads any more.
bool write_all(int to, const char* bytes, std::size_t count) {
  while (count != 0) {
    const ssize_t written = write(to, bytes, count);
    if (written < 0) return false;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

bool CBlockFeed::is_blocked(const std::string& file_name) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file_name, ignored)) return false;
  std::array<char, 18> head{};
  std::ifstream(file_name, std::ios::binary).read(head.data(), head.size());
  return std::string_view(head.data(), 4) == "\x1f\x8b\x08\x04" && head[12] == 'B' && head[13] == 'C';
}

bool CBlockFeed::open(const std::string& file_name, int threads) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  read_end = ends[0];
  write_end = ends[1];
  fcntl(write_end, F_SETPIPE_SZ, 1 << 20);
  hts_set_log_level(HTS_LOG_OFF);  // the program tells of errors itself
  BGZF* const blocks = bgzf_open(file_name.c_str(), "r");
  if (blocks == nullptr) return false;
  // In front of the threads, for which it would wait for ever where they have met a fault.
  if (bgzf_check_EOF(blocks) == 0) fault = "The compressed data are cut off: the block that ends them is missing";
  if (threads > 1) bgzf_mt(blocks, threads, 64);
  feeder = std::thread([this, blocks] { feed(blocks); });
  return true;
}

void CBlockFeed::was_opened() {
  ::close(read_end);
  read_end = -1;
}

void CBlockFeed::feed(void* of_file) {
  auto* const blocks = static_cast<BGZF*>(of_file);
  std::vector<char> text(piece);
  for (;;) {
    const ssize_t count = bgzf_read(blocks, text.data(), text.size());
    taken = bgzf_tell(blocks) >> 16;
    if (count < 0) fault = "The compressed data are corrupt";
    if (count <= 0 || !write_all(write_end, text.data(), static_cast<std::size_t>(count))) break;
  }
  bgzf_close(blocks);
  ::close(write_end);
}

const char* CBlockFeed::close() {
  if (read_end >= 0) was_opened();
  if (feeder.joinable()) {
    feeder.join();
  } else if (write_end >= 0) {
    ::close(write_end);
  }
  write_end = -1;
  return fault;
}
