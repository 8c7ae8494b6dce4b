// Runs a series of cases through both programs, on several threads, and reports what differs.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "comparison.h"
#include "runner.h"
#include "test-case.h"

namespace differential {

struct campaign_settings {
  std::filesystem::path program;
  std::filesystem::path reference;
  std::filesystem::path scratch;  // directory for the runs
  std::filesystem::path found;    // directory for the cases that differ
  int jobs = 2;
  std::uint64_t step = 1;    // from one index to the next
  int seconds = 0;           // begin no case after this time; 0: no limit
  int reference_limit = 10;  // seconds
  int most_differences = 3;  // stop after as many
};

// The case with this index, or none after the last one. Called from several threads at once.
using case_source = std::function<std::optional<test_case>(std::uint64_t index)>;

class CCampaign {
 public:
  explicit CCampaign(campaign_settings campaign) : settings(std::move(campaign)) {}

  // Runs the cases with the indices first, first + step, ... and prints a line with the counts.
  void run(const std::string& name, const case_source& source, std::uint64_t first);

  // No difference was found, and the reference was fast enough for the comparison to mean something.
  bool succeeded() const;

 private:
  struct runners {
    CRunner program;
    CRunner reference;
  };

  campaign_settings settings;
  std::mutex printing;
  std::atomic<std::uint64_t> next_index{0};
  std::atomic<std::uint64_t> compared{0};
  std::atomic<std::uint64_t> too_slow{0};
  std::atomic<int> differences{0};
  std::chrono::steady_clock::time_point start;

  bool may_go_on() const;
  void work(const case_source& source);
  void examine(const test_case& tested, const runners& both);
  std::optional<difference> difference_in(const test_case& tested, const runners& both, bool counted);
  void report(const test_case& tested, const difference& found, const runners& both);
};

}  // namespace differential
