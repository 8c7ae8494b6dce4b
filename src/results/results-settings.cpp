// What the settings of a run mean for the layout of its results.

#include "results-settings.h"

#include <algorithm>
#include <string_view>

#include "CTextScanner.h"
#include "setting-rows.h"
#include "shown-text.h"

namespace {

using kind_type = results_error::kind_type;

const std::string& value_of(const results_header& header, setting which) {
  static const std::string absent;
  for (const auto& [key, value] : header.settings) {
    if (key == row_of(which).name()) return value;
  }
  return absent;
}

// Looks values up; the first one that no run writes is kept as the error.
class CInterpreter {
 public:
  explicit CInterpreter(const results_header& head) : header(head) {}

  // The number of the mode whose word is the value.
  int mode(setting which) {
    const auto words = row_of(which).words;
    const std::string& value = value_of(header, which);
    const auto found = std::find(words.begin(), words.end(), value);
    if (found != words.end()) return static_cast<int>(found - words.begin());
    refuse(which, value);
    return 0;
  }

  int count(setting which) {
    const std::string& value = value_of(header, which);
    CTextScanner scanner(value);
    int number = 0;
    if (!scanner.padded_number(number) || !scanner.at_end() || number < 0) refuse(which, value);
    return number;
  }

  results_error first_error;

 private:
  const results_header& header;

  void refuse(setting which, std::string_view value) {
    if (first_error) return;
    first_error = {kind_type::not_results, "The setting \"" + std::string(row_of(which).name()) +
                                               "\" has the value \"" + shown(value) +
                                               "\", which no run gives it. Please use the file as Quarvo wrote it.\n"};
  }
};

results_error format_not_suited(int format) {
  return {kind_type::not_suited, "These are results in output format " + std::to_string(format) +
                                     ", which does not tell all that is wanted here.\nPlease run the search again "
                                     "with --outputFormat 0, 1 or 3.\n"};
}

}  // namespace

results_error interpret_settings(results_header& header) {
  CInterpreter value(header);
  header.format = value.mode(setting::output_format);
  if (header.format >= gff_format && header.format != one_per_line_format) return format_not_suited(header.format);
  header.print_mode = value.mode(setting::print_mode);
  header.Ns_are_missense = value.mode(setting::treatment_of_Ns) == 1;
  header.report_unit_mode = value.mode(setting::report_unit);
  header.flanking = value.count(setting::flanking);
  if (header.format == one_per_line_format) {
    header.has_sequence_comments = value.mode(setting::sequence_comments) == 1;
  }
  header.is_whole_input =
      value_of(header, setting::sequence_range) == std::string("1").append(range_dash).append(last_sequence);
  header.input_file_name = value_of(header, setting::input_file);
  header.output_file_name = value_of(header, setting::output_file);
  return value.first_error;
}
