// quarvo-differential: compares the program with the slow and literal reference, byte for byte.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include "campaign.h"
#include "case-sources.h"
#include "command-line.h"
#include "files.h"

namespace {

using namespace differential;

campaign_settings settings_of(const command& parsed, const std::filesystem::path& scratch) {
  campaign_settings settings;
  settings.program = std::filesystem::absolute(parsed.text("--program", ""));
  settings.reference = std::filesystem::absolute(parsed.text("--reference", ""));
  settings.scratch = scratch;
  settings.found = std::filesystem::absolute(parsed.text("--found", (scratch / "found").string()));
  std::filesystem::create_directories(settings.found);
  settings.jobs = parsed.number("--jobs", 2);
  settings.step = parsed.number<std::uint64_t>("--step", 1);
  settings.seconds = parsed.number("--seconds", 0);
  settings.reference_limit = parsed.number("--limit", 10);
  settings.most_differences = parsed.number("--differences", 3);
  return settings;
}

// Ends the series after the last case asked for.
case_source bounded(case_source source, const command& parsed, const std::string& mode, std::uint64_t first) {
  const bool all = mode == "exhaustive" || parsed.options.contains("--seconds");
  if (all && !parsed.options.contains("--cases")) return source;
  const std::uint64_t end =
      first + parsed.number<std::uint64_t>("--cases", 1000) * parsed.number<std::uint64_t>("--step", 1);
  return [source = std::move(source), end](std::uint64_t index) { return index < end ? source(index) : std::nullopt; };
}

std::string data_directory(const command& parsed) {
  const char* const environment = std::getenv("QUARVO_DATA");
  return parsed.text("--data", environment == nullptr ? "" : environment);
}

case_source source_of(const std::string& mode, const command& parsed) {
  const std::uint64_t seed = parsed.number<std::uint64_t>("--seed", 1);
  if (mode == "exhaustive") return exhaustive_cases();
  if (mode == "random") return random_cases(seed);
  if (mode == "sweep") return sweep_cases(seed);
  if (mode == "large") return large_cases(seed);
  if (mode == "layout") return layout_cases(seed);
  if (mode == "blocks") return block_cases(seed);
  if (mode == "refused") return refused_cases(seed);
  if (mode == "excerpts") return excerpt_cases(seed, data_directory(parsed));
  throw std::invalid_argument("unknown mode " + mode);
}

constexpr int no_difference = 0;
constexpr int differences_found = 1;
constexpr int wrong_command_line = 2;
constexpr int nothing_compared = 77;

int run_modes(const command& parsed, const std::filesystem::path& scratch) {
  CCampaign campaign(settings_of(parsed, scratch));
  const std::uint64_t first = parsed.number<std::uint64_t>("--first", 0);
  bool compared = false;
  for (const std::string& mode : parsed.modes) {
    if (mode == "excerpts" && data_directory(parsed).empty()) {
      std::printf("excerpts: SKIPPED, QUARVO_DATA names no directory of FASTA files\n");
      continue;
    }
    campaign.run(mode, bounded(source_of(mode, parsed), parsed, mode, first), first);
    compared = true;
  }
  if (!compared) return nothing_compared;
  return campaign.succeeded() ? no_difference : differences_found;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const command parsed = parse_command_line(argc, argv);
    const std::filesystem::path scratch = differential::make_directory(std::filesystem::temp_directory_path());
    const int status = run_modes(parsed, scratch);
    if (status != differences_found) std::filesystem::remove_all(scratch);
    return status;
  } catch (const std::invalid_argument& wrong) {
    std::fprintf(stderr, "%s\n\n%s", wrong.what(), usage);
    return wrong_command_line;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return differences_found;
  }
}
