// One whole run, in the order in which the user sees it.

#include "quarvo-run.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <list>
#include <memory>

#include "CCommandLineOutput.h"
#include "CFile.h"
#include "COutputFile.h"
#include "CSearchController.h"
#include "CSequence_Mol.h"
#include "global-types-and-parameters.h"
#include "number2cstring.h"
#include "quarvo-interruption.h"
#include "quarvo-legend.h"
#include "quarvo-masked.h"
#include "quarvo-messages.h"
#include "results-texts.h"

namespace {

// Records up to this many symbols are read without moving them in memory.
constexpr unsigned expected_symbols = 10000000;

constexpr const char* is_input = "It is the input file.";

int end_on_error(int status) {
  good_bye_on_error(status);
  return status;
}

int refuse_to_open(const COutputFile& file, const std::string& name, int status, const std::string& reason = "") {
  file.report_open_failure(name, reason);
  return end_on_error(status);
}

int end_on_write_failure(const COutputFile& file) {
  file.report_write_failure();
  return end_on_error(status_write_failed);
}

// The files of a run and what happens to each record.
class CRun {
 public:
  // The parameters must have been read.
  explicit CRun(CShortcuts* shortcuts) : settings(settings_of_parameters()), workspace{sat_alloc, shortcuts} {}

  // The steps of a run; each returns 0 or the status with which the run ends.
  int open_input();
  int open_results();
  void print_head();
  int open_masked();
  int process_records();
  int finish();

 private:
  CSequence_Mol record{1, 'N'};
  // Its buffer is not set to zeros, which would be much of what a short run does.
  std::unique_ptr<CFile> input = std::make_unique_for_overwrite<CFile>();
  COutputFile results{"as output file."};
  COutputFile masked{"as file for the masked sequences."};
  unsigned sequence_number = 0;
  search_settings settings;
  search_workspace workspace;

  static search_settings settings_of_parameters() {
    CSearchController::make_minimum_arrays();
    return current_search_settings();
  }
  std::string masked_name() const { return global_input_filename + ".masked"; }
  int check_masked_name() const;
  int read_record();
  bool is_in_range() const;
  int process_record();
  int end_on_read_error();
  int end_on_read_failure() const;
};

int CRun::open_input() {
  record.symbols.reserve(expected_symbols);
  input->open(global_input_filename.c_str());
  if (!input->has_failed()) return 0;
  PrintMessage(stderr, "Sorry! The input file \n   \"", global_input_filename.c_str(),
               "\"\ncould not be opened. I guess it does not exist.\n");
  return end_on_error(status_input_not_opened);
}

// No file is emptied before it is sure that no two of the run's files are one.
int CRun::open_results() {
  if (is_same_regular_file(STDOUT_FILENO, global_input_filename)) {
    return refuse_to_open(results, "standard output", status_output_not_opened, is_input);
  }
  if (global_output_filename.empty()) {
    results.claim_standard_output();
  } else if (!results.claim(global_output_filename)) {
    return refuse_to_open(results, global_output_filename, status_output_not_opened);
  }
  if (results.is_same_file_as(global_input_filename)) {
    return refuse_to_open(results, global_output_filename, status_output_not_opened, is_input);
  }
  if (const int status = check_masked_name(); status != 0) {
    results.abandon();
    return status;
  }
  if (!results.start()) return refuse_to_open(results, global_output_filename, status_output_not_opened);
  return 0;
}

int CRun::check_masked_name() const {
  if (!global_mask_repeats) return 0;
  if (is_same_regular_file(masked_name(), global_input_filename)) {
    return refuse_to_open(masked, masked_name(), status_masked_not_opened, is_input);
  }
  if (results.is_same_file_as(masked_name())) {
    return refuse_to_open(masked, masked_name(), status_masked_not_opened, "It is the file for the results.");
  }
  if (can_have_masked_file(global_input_filename)) return 0;
  return refuse_to_open(masked, masked_name(), status_masked_not_opened,
                        "The input is a pipe or a device, and no file can stand beside it. Please store the input in a "
                        "file first, or run without --maskX.");
}

void CRun::print_head() {
  creator_message(stderr, "");
  print_search_parameters(stderr, "");
  std::fputs(
      "\n\nSearch progress:\n\nTime     - SeqNr - PatLen - Seq-Name\n"
      "------------------------------------------------------------------------\n",
      stderr);
  std::fflush(stderr);

  const CUninterrupted writing;
  creator_message(results.stream(), comment_prefix);
  print_search_parameters(results.stream(), comment_prefix);
  print_output_format(results.stream(), comment_prefix);
  std::fflush(results.stream());
}

int CRun::open_masked() {
  if (!global_mask_repeats) return 0;
  if (masked.claim(masked_name()) && masked.start()) return 0;
  return refuse_to_open(masked, masked_name(), status_masked_not_opened,
                        std::string("It cannot be written: ") + std::strerror(errno) + ".");
}

int CRun::process_records() {
  if (!results.is_intact()) return end_on_write_failure(results);
  while (!input->at_end_of_file()) {
    if (const int status = read_record(); status != 0) return status;
    if (!is_in_range()) continue;
    if (const int status = process_record(); status != 0) return status;
  }
  return 0;
}

int CRun::read_record() {
  ++sequence_number;
  record.readFastaSequence(*input);
  return input->has_failed() && !input->at_end_of_file() ? end_on_read_error() : 0;
}

// The range ends are compared as unsigned numbers, so that -1 is the last sequence of all.
bool CRun::is_in_range() const {
  return sequence_number >= static_cast<unsigned>(global_sequence_from) &&
         sequence_number <= static_cast<unsigned>(global_sequence_to);
}

int CRun::process_record() {
  report_status(sequence_number, record.short_name.c_str(), global_min_unit_length, 'r');
  update_report_time();

  if (workspace.shortcuts != nullptr) workspace.shortcuts->announce(input->text_at_hand());
  CSearchController controller(sequence_number, record, settings, workspace,
                               progress_lines(sequence_number, record.short_name.c_str()));
  switch (global_search_mode) {
    case search_mode_exact:
      controller.exact_search_2();
      break;
    case search_mode_extend_exact:
      controller.search_exact_and_extend_to_imperfect_repeats();
      break;
    default:
      controller.complete_imperfect_search(results.stream());
  }
  CsatContainer& found = global_search_mode == search_mode_exact ? controller.result_list : controller.work_list;
  CSearchController::remove_hidden(found);

  const CUninterrupted writing;
  controller.report_SATList(results.stream(), found.records);
  if (!results.is_intact()) return end_on_write_failure(results);

  if (!global_mask_repeats) return 0;
  write_masked_record(masked.stream(), record, found.records);
  return masked.is_intact() ? 0 : end_on_write_failure(masked);
}

int CRun::end_on_read_error() {
  if (record.is_too_long()) {
    std::fprintf(stderr, "Sorry! The sequence\n   \"%s\"\nhas more than %u symbols. Please split it.\n",
                 record.full_name.c_str(), CSequence_Mol::max_length);
    return end_on_error(status_record_too_long);
  }
  if (record.has_too_long_header()) {
    std::fprintf(stderr, "Sorry! The header in line %s\nhas more than %u bytes. Please shorten it.\n",
                 number2str(input->line), record.max_header_length);
    return end_on_error(status_record_too_long);
  }
  input->look_for_faults();
  if (input->fault != nullptr) return end_on_read_failure();
  std::fputs("\n\n", stderr);
  std::fputs("An error occurred while reading the input file. It might not be a valid fasta file.\n", stderr);
  std::fprintf(stderr, "File position: line %s\n", number2str(input->line));
  if (input->foreign_kind() != nullptr) std::fprintf(stderr, "%s\n", input->foreign_kind());
  std::fflush(stderr);
  return status_malformed_input;
}

int CRun::end_on_read_failure() const {
  PrintMessage(stderr, "Sorry! Failed to read file\n   \"", global_input_filename.c_str(),
               "\"\nas input file, at line ", number2str(input->line), ": ", input->fault,
               ".\nThe results end before that. Please run again with a file that can be read to its end.\n");
  return end_on_error(status_read_failed);
}

// All records are done: a user who stops the run now gets the rest of it as well.
int CRun::finish() {
  hold_signals();
  if (global_mask_repeats && !masked.close()) return end_on_write_failure(masked);
  input->close();
  print_closing_line(results.stream());
  if (!results.close()) return end_on_write_failure(results);
  good_bye();
  return 0;
}

// Nothing must be written to it, not even the greeting. Where the command line is refused, nobody can tell which of its
// words is the input.
bool is_standard_error_input(int argc, char** argv) {
  const auto is_standard_error = [](const std::string& word) { return is_same_regular_file(STDERR_FILENO, word); };
  if (argc < 2 || std::none_of(argv + 1, argv + argc, is_standard_error)) return false;
  const std::vector<std::string> names = files_named(argc, argv);
  const bool is_known = names.size() == 1 || names.size() == 2;
  return !is_known || is_standard_error(names[0]);
}

int read_parameters(int argc, char** argv) {
  try {
    return read_and_init_parameters(argc, argv);
  } catch (const unwritten_help&) {
    return status_write_failed;
  }
}

}  // namespace

int run_quarvo(int argc, char** argv, CShortcuts* shortcuts) {
  if (is_standard_error_input(argc, argv)) return status_output_not_opened;
  time_analysis_started = std::time(nullptr);
  quarvo_welcome(stderr);
  std::fflush(stderr);
  if (const int status = read_parameters(argc, argv); status != 0) return end_on_error(status);

  CRun run(shortcuts);
  if (const int status = run.open_input(); status != 0) return status;
  if (const int status = run.open_results(); status != 0) return status;
  run.print_head();
  if (const int status = run.open_masked(); status != 0) return status;
  if (const int status = run.process_records(); status != 0) return status;
  return run.finish();
}
