// What the settings of a run mean for the layout of its results.

#include "results-settings.h"

#include <initializer_list>
#include <string_view>

#include "CTextScanner.h"
#include "shown-text.h"

namespace {

using kind_type = results_trouble::kind_type;

const std::string& setting(const results_header& header, std::string_view name) {
  static const std::string absent;
  for (const auto& [key, value] : header.settings) {
    if (key == name) return value;
  }
  return absent;
}

// Looks values up; the first one that no run writes is kept as the trouble.
class CInterpreter {
 public:
  explicit CInterpreter(const results_header& head) : header(head) {}

  // The index of the value among the words.
  int index(std::string_view name, std::initializer_list<std::string_view> words) {
    const std::string& value = setting(header, name);
    int found = 0;
    for (const std::string_view word : words) {
      if (value == word) return found;
      ++found;
    }
    refuse(name, value);
    return 0;
  }

  int count(std::string_view name) {
    const std::string& value = setting(header, name);
    CTextScanner scanner(value);
    int number = 0;
    if (!scanner.padded_number(number) || !scanner.at_end() || number < 0) refuse(name, value);
    return number;
  }

  results_trouble first_trouble;

 private:
  const results_header& header;

  void refuse(std::string_view name, std::string_view value) {
    if (first_trouble) return;
    first_trouble = {kind_type::not_results,
                     "The setting \"" + std::string(name) + "\" has the value \"" + shown(value) +
                         "\", which no run gives it. Please use the file as Quarvo wrote it.\n"};
  }
};

results_trouble format_not_suited(int format) {
  return {kind_type::not_suited, "These are results in output format " + std::to_string(format) +
                                     ", which does not tell all that is wanted here.\nPlease run the search again "
                                     "with --outputFormat 0, 1 or 3.\n"};
}

}  // namespace

results_trouble interpret_settings(results_header& header) {
  CInterpreter value(header);
  header.format = value.index(
      "Output format", {"quarvo format", "extended quarvo format", "gff", "one-per-line format", "fasta format"});
  if (header.format == 2 || header.format == 4) return format_not_suited(header.format);
  header.print_mode = value.index("Print sequence mode", {"don't print sequence", "print sequence", "print alignment"});
  header.Ns_are_missense = value.index("Treat N's as", {"neutral", "missense"}) == 1;
  header.report_unit_mode = value.index("Report units as", {"as they are", "alphabetical normal form",
                                                            "alphabetical normal form using reverse complement"});
  header.flanking = value.count("Number of flanking nucletides");
  if (header.format == 3) header.has_sequence_comments = value.index("Print seq. info as comment", {"no", "yes"}) == 1;
  header.is_whole_input = setting(header, "Sequence range to process") == "1 - last sequence";
  header.input_file_name = setting(header, "Input file name");
  header.output_file_name = setting(header, "Output file name");
  return value.first_trouble;
}

std::vector<std::string> lines_behind_settings(const results_header& header) {
  if (header.format == 3) {
    return {std::string("seq-name\tunit-length\tperfection\tstart\tend\tlength\trepeat-number\tscore\tmismatches\t"
                        "insertions\tdeletions\tNs\tunit\trepeat-seq") +
            (header.flanking != 0 ? "\tleft-flanking-seq\tright-flanking-seq" : "")};
  }
  std::vector<std::string> meanings{"Repeat unit length",
                                    "Position at which repeat starts in current sequence",
                                    "Position at which repeat ends in current sequence",
                                    "Length of repeat in original sequence, i.e. (end-start+1)",
                                    "Normalized repeat length, i.e. (end-start+1-insertions+deletions)",
                                    "Repeat score",
                                    "Repeat perfection"};
  if (header.format == 1) {
    meanings.insert(meanings.end(), {"Number of mismatches", "Number of insertions", "Number of deletions"});
    if (!header.Ns_are_missense) meanings.emplace_back("Number of N's");
  }
  meanings.emplace_back("Repeat unit");

  std::vector<std::string> lines{"# ", "# Columns in lines of output providing repeat information:"};
  for (std::size_t i = 1; i <= meanings.size(); ++i) {
    lines.push_back(std::string("# Column ") + (i < 10 ? " " : "") + std::to_string(i) + ": " + meanings[i - 1]);
  }
  lines.emplace_back("# ");
  return lines;
}
