// The head of a results file: who computed it, the settings, the legend of the columns.

#include "results-header.h"

#include <string_view>

#include "CTextScanner.h"
#include "repeat-columns.h"
#include "results-settings.h"
#include "results-texts.h"
#include "setting-rows.h"

namespace {

using kind_type = results_error::kind_type;

std::string first_line() { return std::string(comment_prefix) + creator_title; }

// Longer first lines are no results, whatever is in them.
constexpr std::size_t longest_first_line = 4096;

// Reads line by line; the first error ends the reading.
class CHeaderReader {
 public:
  CHeaderReader(CLineReader& file, results_header& result) : lines(file), header(result) {}

  results_error read() {
    header = results_header();
    if (!read_first_line() || !read_version() || !read_title()) return error;
    if (!read_settings()) return error;
    error = interpret_settings(header);
    if (error) return error;
    for (const std::string& line : column_lines(header.layout(), comment_prefix)) {
      if (!next_line_is(line)) break;
    }
    return error;
  }

 private:
  CLineReader& lines;
  results_header& header;
  results_error error;
  std::string_view separator = " ";

  bool fail(results_error what) {
    error = std::move(what);
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
        if (lines.is_cut() && first_line().starts_with(lines.text())) return fail(unexpected_end(lines));
        return lines.text() == first_line() || fail_as_no_results();
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
    if (text == first_line() + '\r') {
      return fail({kind_type::not_results,
                   "Its lines end with CR LF. Please use the file as Quarvo wrote it, with lines that end with LF.\n"});
    }
    return fail({kind_type::not_results,
                 "It does not begin like results of Quarvo: at line 1, \"" + first_line() +
                     "\" was expected.\nPlease name a file that Quarvo wrote. The messages of a run must not go into "
                     "the same file.\n"});
  }

  bool read_version() {
    if (!next_line()) return false;
    CTextScanner scanner(lines.text());
    if (!scanner.literal(comment_prefix) || !scanner.literal(creator_version))
      return fail_here("the version of Quarvo");
    header.program_version = scanner.remainder();
    return true;
  }

  // The line after the title's label is nothing but the separator of all settings.
  bool read_title() {
    if (!next_line()) return false;
    CTextScanner scanner(lines.text());
    if (!scanner.literal(comment_prefix) || !scanner.literal(settings_title)) return fail_as_no_title();
    for (const char* const known : {separator_of_lines, separator_of_tables}) {
      if (scanner.remainder() != known) continue;
      separator = known;
      return true;
    }
    return fail_as_no_title();
  }

  bool fail_as_no_title() { return fail_here("the settings of the search"); }

  bool take_setting(const setting_row& row) {
    CTextScanner scanner(lines.text());
    if (!scanner.literal(comment_prefix) || !scanner.literal(row.label) || !scanner.literal(separator)) return false;
    header.settings.emplace_back(row.name(), scanner.remainder());
    return true;
  }

  // A line that begins with no label belongs to the file name before it, which then holds a line end.
  bool take_rest_of_name() {
    if (header.settings.empty()) return false;
    const std::string& before = header.settings.back().first;
    if (before != row_of(setting::input_file).name() && before != row_of(setting::output_file).name()) return false;
    header.settings.back().second.append("\n").append(lines.text());
    return true;
  }

  bool is_left_out(const setting_row& row) const {
    return row.presence == setting_presence::in_tables && separator != separator_of_tables;
  }

  static bool may_be_missing(const setting_row& row) {
    return row.presence == setting_presence::when_named || row.presence == setting_presence::unless_exact;
  }

  bool read_settings() {
    for (std::size_t at = 0; at != setting_rows.size(); ++at) {
      if (is_left_out(setting_rows[at])) continue;
      if (!next_line()) return false;
      const std::size_t first = at;
      while (!take_setting(setting_rows[at])) {
        if (may_be_missing(setting_rows[at])) {
          ++at;
          continue;
        }
        if (!take_rest_of_name()) return fail_here("the setting \"" + std::string(setting_rows[at].name()) + "\"");
        at = first - 1;
        break;
      }
    }
    return true;
  }
};

std::string place(const CLineReader& lines) { return "At line " + std::to_string(lines.number()); }

}  // namespace

results_error read_results_header(CLineReader& lines, results_header& header) {
  return CHeaderReader(lines, header).read();
}

results_error unexpected_line(const CLineReader& lines, const std::string& expected) {
  return {kind_type::not_results,
          place(lines) + ", " + expected + " was expected. Please use the file as Quarvo wrote it.\n"};
}

results_error unexpected_end(const CLineReader& lines) {
  return {kind_type::unfinished, "The file ends at line " + std::to_string(lines.number()) +
                                     ", without the closing line \"" + closing_line_of_run(quarvo_format) +
                                     "\".\nThe run that wrote it failed, was stopped "
                                     "or is still at work, or the file was cut. Please run it again, to its end.\n"};
}

results_error read_failure(const CLineReader& lines) {
  return {kind_type::not_read, place(lines) + ": " + lines.error() + ".\n"};
}
