#include "command-line.h"

#include <string_view>

namespace differential {

// Every option stands in it between blanks; parse_command_line knows them from here.
const char* const usage =
    "quarvo-differential --program P --reference R [options] MODE...\n"
    "\n"
    "  --program P   the program to be tested\n"
    "  --reference R the one that it is compared with\n"
    "\n"
    "MODE is exhaustive, random, sweep, large, layout, blocks, refused or excerpts. Options:\n"
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

command parse_command_line(int argc, char** argv) {
  command parsed;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    const bool is_option = word.starts_with("-");
    if (!is_option) {
      parsed.modes.push_back(word);
    } else if (std::string_view(usage).find("  " + word + ' ') == std::string_view::npos) {
      throw std::invalid_argument("unknown option " + word);
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

}  // namespace differential
