#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

// The text of a file compressed by blocks (BGZF), decompressed by several threads and handed on through a pipe, so that
// it is read like any other file. Not copyable.
class CBlockFeed {
 public:
  // Whether the file is regular and begins with such a block.
  static bool is_blocked(const std::string& file_name);

  // Begins to decompress. Returns false when that is impossible, with the reason in errno.
  bool open(const std::string& file_name, int threads);

  CBlockFeed() = default;
  CBlockFeed(const CBlockFeed&) = delete;
  CBlockFeed& operator=(const CBlockFeed&) = delete;
  ~CBlockFeed() { close(); }

  // The name under which the text can be opened, once.
  std::string pipe_name() const { return "/dev/fd/" + std::to_string(read_end); }
  // To be called when it has been opened.
  void was_opened();

  // Compressed bytes that have been taken from the file.
  std::int64_t position() const { return taken; }

  // Ends the decompression, whether or not it is complete. Returns why the text ended early, or null; to be asked for
  // when all of the text has been read.
  const char* close();

 private:
  int read_end = -1;
  int write_end = -1;
  std::atomic<std::int64_t> taken = 0;
  const char* fault = nullptr;
  std::thread feeder;

  void feed(void* blocks);
};
