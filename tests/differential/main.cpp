// quarvo-differential: compares the program with the slow and literal reference, byte for byte.

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <stdexcept>
#include <string_view>

#include "campaign.h"
#include "case-sources.h"
#include "files.h"

namespace {

using namespace differential;

constexpr const char* usage =
    "quarvo-differential --program P --reference R [options] MODE...\n"
    "\n"
    "MODE is exhaustive, random, sweep, large, layout, blocks or excerpts. Options:\n"
    "  --seed S      the series of random cases (default 1)\n"
    "  --first I     begin with case I of the series (default 0)\n"
    "  --step K      run only every K-th case (default 1)\n"
    "  --cases N     run the first N of these (default: exhaustive all, the others 1000)\n"
    "  --seconds T   begin no case of a mode after T seconds; the number of cases is then unlimited unless given\n"
    "  --jobs J      run J cases at once (default 2)\n"
    "  --limit T     kill the reference after T seconds and count the case as too slow (default 10)\n"
    "  --found DIR   keep differing cases there (default: a new directory for temporary files)\n"
    "  --differences D  stop after D differences (default 3)\n"
    "  --data DIR    FASTA files for excerpts (default: the environment variable QUARVO_DATA)\n"
    "\n"
    "Exit status: 0 no difference, 1 differences or too many cases too slow, 2 wrong command line, 77 nothing to\n"
    "compare (excerpts without a directory).\n";

struct command {
  std::map<std::string, std::string> options;
  std::vector<std::string> modes;

  std::string text(const std::string& name, const std::string& otherwise) const {
    const auto found = options.find(name);
    return found == options.end() ? otherwise : found->second;
  }

  template <typename Number>
  Number number(const std::string& name, Number otherwise) const {
    const auto found = options.find(name);
    if (found == options.end()) return otherwise;
    const char* const end = found->second.data() + found->second.size();
    Number value{};
    if (const auto result = std::from_chars(found->second.data(), end, value);
        result.ec != std::errc() || result.ptr != end) {
      throw std::invalid_argument("not a number: " + name + ' ' + found->second);
    }
    return value;
  }
};

command parse(int argc, char** argv) {
  command parsed;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (!word.starts_with("--")) {
      parsed.modes.push_back(word);
    } else if (i + 1 == argc) {
      throw std::invalid_argument("no value for " + word);
    } else {
      parsed.options[word] = argv[++i];
    }
  }
  if (parsed.modes.empty() || !parsed.options.contains("--program") || !parsed.options.contains("--reference")) {
    throw std::invalid_argument("--program, --reference and a mode are needed");
  }
  return parsed;
}

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

// Ends the series behind the last case asked for.
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
    const command parsed = parse(argc, argv);
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
