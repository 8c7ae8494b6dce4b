// The head of a results file: who computed it, the settings, the legend of the columns.

#include "results-header.h"

#include <array>
#include <string_view>

#include "CTextScanner.h"
#include "results-settings.h"

namespace {

using kind_type = results_trouble::kind_type;

constexpr std::string_view first_line = "# Results computed with:";
constexpr std::string_view version_line = "#    Quarvo, version ";
constexpr std::string_view title_line = "# Parameter settings used in this search:";
constexpr std::string_view comment = "# ";

// Longer first lines are no results, whatever is in them.
constexpr std::size_t longest_first_line = 4096;

// A setting's label, as it stands in front of the separator, and whether a run can be without it.
struct label_row {
  std::string_view text;
  bool is_optional;
};

constexpr std::array<label_row, 22> labels{{
    {"Input file name:                        ", false},
    {"Output file name:                       ", true},
    {"   Sequence range to process:           ", false},
    {"   Satellites searched for:             ", false},
    {"   Recursion depth:                     ", true},
    {"   Maximum score reduction:             ", true},
    {"   Minimum unit length:                 ", false},
    {"   Maximum unit length:                 ", false},
    {"   Minimum score:                       ", false},
    {"   Minimum length:                      ", false},
    {"   Min. to max. perfection range:       ", false},
    {"   Treat N's as:                        ", false},
    {"   Max. succesive N's allowed:          ", false},
    {"   Mismatch score:                      ", true},
    {"   Indel score:                         ", true},
    {"   Show shorter (not longer) of two repeat variants with equal score: ", false},
    {"   Number of flanking nucletides:       ", false},
    {"   Remove mostly overlapping satellites:", false},
    {"   Write file with masked seq.:         ", false},
    {"   Computing perfections treat N's:     ", false},
    {"   Report units as:                     ", false},
    {"   Output format:                       ", false},
}};
constexpr label_row print_mode_label{"   Print sequence mode:                 ", false};
constexpr label_row comments_label{"   Print seq. info as comment:          ", false};

constexpr std::string_view name_of(const label_row& label) {
  std::string_view name = label.text;
  name.remove_prefix(name.find_first_not_of(' '));
  return name.substr(0, name.rfind(':'));
}

// Reads line by line; the first trouble ends the reading.
class CHeaderReader {
 public:
  CHeaderReader(CLineReader& file, results_header& result) : lines(file), header(result) {}

  results_trouble read() {
    header = results_header();
    if (!read_first_line() || !read_version() || !read_title()) return trouble;
    if (!read_settings()) return trouble;
    trouble = interpret_settings(header);
    if (trouble) return trouble;
    for (const std::string& line : lines_behind_settings(header)) {
      if (!next_line_is(line)) break;
    }
    return trouble;
  }

 private:
  CLineReader& lines;
  results_header& header;
  results_trouble trouble;
  std::string_view separator = " ";

  bool fail(results_trouble what) {
    trouble = std::move(what);
    return false;
  }

  bool fail_here(std::string_view expected) { return fail(unexpected_line(lines, std::string(expected))); }

  bool next_line() {
    switch (lines.next()) {
      case CLineReader::outcome::line:
        return !lines.is_cut() || fail(unexpected_end(lines));
      case CLineReader::outcome::end_of_file:
        return fail(unexpected_end(lines));
      default:
        return fail(read_failure(lines));
    }
  }

  bool next_line_is(std::string_view text) {
    return next_line() && (lines.text() == text || fail_here("\"" + std::string(text) + "\""));
  }

  bool read_first_line() {
    switch (lines.next_up_to(longest_first_line)) {
      case CLineReader::outcome::end_of_file:
        return fail({kind_type::not_results,
                     "The file is empty. The run that should have written it failed, or has not begun.\n"});
      case CLineReader::outcome::failed:
        return fail(read_failure(lines));
      default:
        if (lines.is_cut() && first_line.starts_with(lines.text())) return fail(unexpected_end(lines));
        return lines.text() == first_line || fail_as_no_results();
    }
  }

  bool fail_as_no_results() {
    const std::string_view text = lines.text();
    if (lines.foreign_kind() != nullptr) {
      return fail({kind_type::not_results, std::string(lines.foreign_kind()) + "\n"});
    }
    if (text.starts_with('>')) {
      return fail({kind_type::not_results,
                   "It looks like a FASTA file. What is wanted is what Quarvo writes when it searches such a file.\n"});
    }
    if (text == std::string(first_line) + '\r') {
      return fail({kind_type::not_results,
                   "Its lines end with CR LF. Please use the file as Quarvo wrote it, with lines that end with LF.\n"});
    }
    return fail({kind_type::not_results,
                 "It does not begin like results of Quarvo: at line 1, \"" + std::string(first_line) +
                     "\" was expected.\nPlease name a file that Quarvo wrote. The messages of a run must not go into "
                     "the same file.\n"});
  }

  bool read_version() {
    if (!next_line()) return false;
    CTextScanner scanner(lines.text());
    if (!scanner.literal(version_line)) return fail_here("the version of Quarvo");
    header.program_version = scanner.remainder();
    return true;
  }

  // The line behind the title's label is nothing but the separator of all settings.
  bool read_title() {
    if (!next_line()) return false;
    CTextScanner scanner(lines.text());
    if (!scanner.literal(title_line)) return fail_here("the settings of the search");
    if (scanner.remainder() != " " && scanner.remainder() != "\t") return fail_here("the settings of the search");
    separator = scanner.remainder() == "\t" ? "\t" : " ";
    return true;
  }

  bool take_setting(const label_row& label) {
    CTextScanner scanner(lines.text());
    if (!scanner.literal(comment) || !scanner.literal(label.text) || !scanner.literal(separator)) return false;
    header.settings.emplace_back(name_of(label), scanner.remainder());
    return true;
  }

  // A line that begins with no label belongs to the file name before it, which then holds a line end.
  bool take_rest_of_name() {
    if (header.settings.empty() || !header.settings.back().first.ends_with(" file name")) return false;
    header.settings.back().second.append("\n").append(lines.text());
    return true;
  }

  bool read_settings() {
    std::size_t row = 0;
    while (row != labels.size()) {
      if (!next_line()) return false;
      std::size_t taken = row;
      while (!take_setting(labels[taken])) {
        if (labels[taken].is_optional) {
          ++taken;
          continue;
        }
        if (!take_rest_of_name()) return fail_here("the setting \"" + std::string(name_of(labels[taken])) + "\"");
        taken = row - 1;
        break;
      }
      row = taken + 1;
    }
    if (!read_setting(print_mode_label)) return false;
    return separator != "\t" || read_setting(comments_label);
  }

  bool read_setting(const label_row& label) {
    if (!next_line()) return false;
    return take_setting(label) || fail_here("the setting \"" + std::string(name_of(label)) + "\"");
  }
};

std::string place(const CLineReader& lines) { return "At line " + std::to_string(lines.number()); }

}  // namespace

results_trouble read_results_header(CLineReader& lines, results_header& header) {
  return CHeaderReader(lines, header).read();
}

results_trouble unexpected_line(const CLineReader& lines, const std::string& expected) {
  return {kind_type::not_results,
          place(lines) + ", " + expected + " was expected. Please use the file as Quarvo wrote it.\n"};
}

results_trouble unexpected_end(const CLineReader& lines) {
  return {kind_type::unfinished,
          "The file ends at line " + std::to_string(lines.number()) +
              ", without the closing line \"## Finished successfully. ##\".\nThe run that wrote it failed, was stopped "
              "or is still at work, or the file was cut. Please run it again, to its end.\n"};
}

results_trouble read_failure(const CLineReader& lines) {
  return {kind_type::not_read, place(lines) + ": " + lines.trouble() + ".\n"};
}
