// One whole conversion.

#include "convert-run.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "CConversion.h"
#include "CConvertedFile.h"
#include "CResultsReader.h"
#include "CSequenceLengths.h"
#include "companion.h"
#include "convert-options.h"
#include "option-parser.h"
#include "shown-text.h"

namespace {

constexpr const char* right_lengths = "Please name the lengths of the sequences that were searched.\n";

std::vector<std::string> read_files() {
  return {convert_options.results[0], convert_options.lengths, convert_options.conversion.fasta};
}

void take_dashes_as_streams() {
  for (std::string* name : {&convert_options.results[0], &convert_options.lengths, &convert_options.conversion.fasta}) {
    if (*name == "-") *name = "/dev/stdin";
  }
  if (convert_options.output == "-") convert_options.output.clear();
}

// The files of a conversion and what happens to each item of the results.
class CConvertRun {
 public:
  // The steps of a run; each returns 0 or the status with which the run ends.
  int open_input();
  int open_output();
  int convert();
  int finish();

 private:
  CResultsReader results;
  CSequenceLengths lengths;
  std::optional<int> length_by_table;  // of the sequence in hand, where the results do not tell it
  CConvertedFile output;
  std::unique_ptr<CConversion> conversion;

  int begin_sequence();
  int add_repeat();
  int end_with_message(int status, const std::string& message) const;
  int end_on_refusal() const { return end_with_message(conversion->status(), conversion->error()); }
  int end_on_write_failure() const;
};

int CConvertRun::open_input() {
  if (!results.open(convert_options.results[0])) {
    return end_with_message(companion_status::of(results.error()), results.error_text());
  }
  if (convert_options.lengths.empty() || lengths.read(convert_options.lengths)) return 0;
  return end_with_message(lengths.is_unreadable() ? companion_status::not_read : companion_status::not_suited,
                          lengths.error());
}

int CConvertRun::open_output() {
  if (!output.open(convert_options.output, read_files())) return companion_status::not_written;
  convert_options.conversion.symbols_in_table = lengths.total();
  conversion = make_conversion(convert_options.conversion);
  return 0;
}

int CConvertRun::convert() {
  if (!conversion->begin(output.stream(), results.header())) return end_on_refusal();
  for (;;) {
    int status = 0;
    switch (results.next()) {
      case CResultsReader::item::sequence:
        status = begin_sequence();
        break;
      case CResultsReader::item::repeat:
        status = add_repeat();
        break;
      case CResultsReader::item::end:
        return 0;
      default:
        return end_with_message(companion_status::of(results.error()), results.error_text());
    }
    if (status != 0) return status;
  }
}

int CConvertRun::begin_sequence() {
  results_sequence sequence = results.sequence();
  const std::optional<int> length = lengths.of(sequence.name);
  if (length && sequence.length && *length != *sequence.length) {
    return end_with_message(companion_status::not_suited,
                            "Sorry, at line " + std::to_string(results.line_number()) +
                                " the results give the length " + std::to_string(*sequence.length) + " of\n   \"" +
                                shown(sequence.name) + "\"\nand the table of lengths gives " + std::to_string(*length) +
                                ".\n" + right_lengths);
  }
  length_by_table = sequence.length ? std::nullopt : length;
  if (!sequence.length) sequence.length = length;
  if (!conversion->begin_sequence(output.stream(), sequence)) return end_on_refusal();
  return std::ferror(output.stream()) == 0 ? 0 : end_on_write_failure();
}

int CConvertRun::add_repeat() {
  if (length_by_table && results.repeat().end > *length_by_table) {
    return end_with_message(companion_status::not_suited,
                            "Sorry, at line " + std::to_string(results.line_number()) +
                                " a repeat ends past the length that the table of lengths gives for\n   \"" +
                                shown(results.sequence().name) + "\"\n" + right_lengths);
  }
  if (!conversion->add(output.stream(), results.repeat())) return end_on_refusal();
  return std::ferror(output.stream()) == 0 ? 0 : end_on_write_failure();
}

int CConvertRun::finish() {
  if (!conversion->finish(output.stream())) return end_on_refusal();
  return output.finish() ? 0 : end_on_write_failure();
}

int CConvertRun::end_with_message(int status, const std::string& message) const {
  std::fputs(message.c_str(), stderr);
  std::fputs(output.fate(), stderr);
  return status;
}

int CConvertRun::end_on_write_failure() const {
  output.report_write_failure();
  return companion_status::not_written;
}

}  // namespace

int run_convert(int argc, char** argv) {
  if (!read_options(convert_option_table(), convert_description, companion_status::not_written, argc, argv)) {
    return companion_status::command_line;
  }
  if (convert_options.conversion.to == to_mask && convert_options.conversion.fasta.empty()) {
    std::fputs("Sorry, masking needs the FASTA file that was searched: --fasta FILE.\n", stderr);
    return companion_status::command_line;
  }
  take_dashes_as_streams();
  if (is_standard_error(read_files())) return companion_status::not_written;
  CConvertRun run;
  if (const int status = run.open_input(); status != 0) return status;
  if (const int status = run.open_output(); status != 0) return status;
  if (const int status = run.convert(); status != 0) return status;
  return run.finish();
}
