#include "campaign.h"

#include <cstdio>
#include <exception>
#include <thread>
#include <vector>

#include "files.h"
#include "printable-text.h"
#include "shrinker.h"

namespace differential {

namespace {

constexpr int shrink_runs = 4000;
constexpr int shrink_seconds = 120;
constexpr std::size_t longest_printed_input = 2000;

// A case that the reference does not end within its time limit shows only whether the program crashes.
std::optional<difference> crash_of(const run_outcome& program) {
  if (!program.ended || program.status == 0) return std::nullopt;
  return difference{"exit status",
                    "the reference is too slow, and the program ends with status " + std::to_string(program.status)};
}

std::string reproduction(const test_case& tested, const std::filesystem::path& program) {
  std::string text = "cd \"$(mktemp -d)\"\n";
  const std::string printing = printing_command(tested.fasta);
  if (printing.size() <= longest_printed_input)
    text.append("{ ").append(printing).append("; } > ").append(input_name).append("\n");
  return text + command_line(program.string(), tested) + "\n";
}

void keep_files(const std::filesystem::path& directory, const run_outcome& outcome) {
  std::filesystem::create_directories(directory);
  for (const auto& [name, text] : outcome.files) write_file(directory / name, text);
}

}  // namespace

bool CCampaign::may_go_on() const {
  if (differences >= settings.most_differences) return false;
  if (settings.seconds == 0) return true;
  return std::chrono::steady_clock::now() - start < std::chrono::seconds(settings.seconds);
}

void CCampaign::run(const std::string& name, const case_source& source, std::uint64_t first) {
  start = std::chrono::steady_clock::now();
  next_index = first;
  const std::uint64_t compared_before = compared;
  const std::uint64_t too_slow_before = too_slow;
  std::vector<std::jthread> threads;
  threads.reserve(static_cast<std::size_t>(settings.jobs));
  for (int i = 0; i < settings.jobs; ++i) threads.emplace_back([&] { work(source); });
  threads.clear();
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
  std::printf("%s: %llu cases compared, %llu too slow for the reference, %.0f seconds\n", name.c_str(),
              static_cast<unsigned long long>(compared - compared_before),
              static_cast<unsigned long long>(too_slow - too_slow_before), elapsed.count());
  std::fflush(stdout);
}

bool CCampaign::succeeded() const { return differences == 0 && compared > 0 && too_slow * 20 <= compared; }

void CCampaign::work(const case_source& source) {
  try {
    const runners both{CRunner(settings.program, settings.scratch), CRunner(settings.reference, settings.scratch)};
    while (may_go_on()) {
      const auto tested = source(next_index.fetch_add(settings.step));
      if (!tested) return;
      examine(*tested, both);
    }
  } catch (const std::exception& failure) {
    const std::lock_guard lock(printing);
    std::printf("stopped: %s\n", failure.what());
    ++differences;
  }
}

void CCampaign::examine(const test_case& tested, const runners& both) {
  const auto found = difference_in(tested, both, true);
  if (!found || differences.fetch_add(1) >= settings.most_differences) return;
  report(tested, *found, both);
}

std::optional<difference> CCampaign::difference_in(const test_case& tested, const runners& both, bool counted) {
  const run_outcome reference = both.reference.run(tested, settings.reference_limit);
  const run_outcome program = both.program.run(tested, 4 * settings.reference_limit);
  if (counted) ++(reference.ended ? compared : too_slow);
  return reference.ended ? compare(program, reference) : crash_of(program);
}

void CCampaign::report(const test_case& tested, const difference& found, const runners& both) {
  {
    const std::lock_guard lock(printing);
    std::printf("\nDIFFERENCE in %s\n%s: %s\nshrinking ...\n", tested.label.c_str(), found.channel.c_str(),
                found.text.c_str());
    std::fflush(stdout);
  }
  const auto fails_alike = [&](const test_case& candidate) {
    const auto again = difference_in(candidate, both, false);
    return again && again->channel == found.channel;
  };
  const test_case small = CShrinker(fails_alike, shrink_runs, shrink_seconds).shrink(tested);
  const auto small_difference = difference_in(small, both, false);
  const std::filesystem::path directory = make_directory(settings.found);
  write_file(directory / input_name, small.fasta);
  write_file(directory / "unshrunk.fa", tested.fasta);
  keep_files(directory / "program", both.program.run(small, 4 * settings.reference_limit));
  keep_files(directory / "reference", both.reference.run(small, settings.reference_limit));
  const std::string text = "case:      " + tested.label + "\nunshrunk:  " + command_line("quarvo", tested) +
                           "\nshrunk to:\n" + reproduction(small, settings.program) +
                           (small_difference ? small_difference->channel + ": " + small_difference->text
                                             : std::string("(differs only now and then)")) +
                           "\n";
  write_file(directory / "case.txt", text);
  const std::lock_guard lock(printing);
  std::printf("%skept in %s\n\n", text.c_str(), directory.c_str());
  std::fflush(stdout);
}

}  // namespace differential
