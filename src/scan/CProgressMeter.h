#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

// What a run tells about itself on standard error while it goes on: on a terminal one line that is written again and
// again, elsewhere lines.
class CProgressMeter {
 public:
  enum class style { none, terminal, lines };

  // `whole` is the work in bytes of the input; 0 where it is not known.
  CProgressMeter(style its_style, std::int64_t whole);
  CProgressMeter(const CProgressMeter&) = delete;
  CProgressMeter& operator=(const CProgressMeter&) = delete;
  ~CProgressMeter() { stop(); }

  // From any thread.
  void add_searched(std::int64_t symbols, double bytes);
  void add_repeats(std::int64_t count) { repeats += count; }
  void add_sequence() { ++sequences; }

  // Ends the telling; the line on a terminal goes.
  void stop();

  // "1,234 repeats in 5 sequences of 6,789 bp, in 1.2 s (5.7 Mb/s)".
  std::string summary() const;

 private:
  using clock = std::chrono::steady_clock;

  const style how;
  const std::int64_t whole;
  const clock::time_point begin = clock::now();
  std::atomic<std::int64_t> symbols = 0;
  std::atomic<std::int64_t> bytes = 0;
  std::atomic<std::int64_t> repeats = 0;
  std::atomic<std::int64_t> sequences = 0;
  std::mutex guard;
  std::condition_variable changed;
  bool is_stopped = false;
  std::thread teller;

  double seconds() const { return std::chrono::duration<double>(clock::now() - begin).count(); }
  std::string line() const;
  void tell();
};

// "1,234,567".
std::string with_commas(std::int64_t number);
