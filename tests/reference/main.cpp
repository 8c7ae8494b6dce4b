// quarvo-reference: the slow and literal program that the real one is compared with, byte for byte.
// It takes the same command line and writes the same results, masked file, standard error and exit
// status, one numbered step after the other, without any idea that would make it faster.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <memory>

#include "parameters.h"
#include "reader.h"
#include "search.h"

// ---- messages --------------------------------------------------------------------------------

static time_t time_analysis_started;
static time_t time_next_status_report = time(nullptr);

static void quarvo_welcome() {
  fprintf(stderr,
          "\n\n"
          "      Welcome to Quarvo, version 3.3.10,\n"
          "      a microsatellite and satellite search tool.\n"
          "\n\n");
  fflush(stderr);
}

static void creator_message(FILE* out, const char* prefix) {
  fprintf(out, "%sResults computed with:\n", prefix);
  fprintf(out, "%s   Quarvo, version 3.3.10\n", prefix);
}

void report_status(unsigned number, const char* name, unsigned length, char) {
  const unsigned elapsed = static_cast<unsigned>(time(nullptr) - time_analysis_started);
  const short hours = static_cast<short>(elapsed / 3600);
  const short minutes = static_cast<short>(elapsed % 3600 / 60);
  const short seconds = static_cast<short>(elapsed % 60);
  fprintf(stderr, "%.2d.%.2d.%.2d - # %3d - %4dbp - %.70s\n", hours, minutes, seconds, static_cast<int>(number),
          static_cast<int>(length), name);
  fflush(stderr);
}

static void update_report_time() { time_next_status_report = time(nullptr) + 59; }

bool check_report_status() {
  if (time(nullptr) <= time_next_status_report) return false;
  update_report_time();
  return true;
}

static void good_bye_on_error(int code) {
  if (code > 0)
    fprintf(stderr, "\nAnalysis has been stopped by the user.\n\n");
  else if (code == -1)
    fprintf(stderr, "\n\n");
  else if (code < -1)
    fprintf(stderr, "\nAnalysis has been aborted due to errors. Error number: %d\n\n", code);
  fflush(stderr);
}

// ---- files -----------------------------------------------------------------------------------

static int file_failure(const char* first_line, const std::string& name, const char* last_line, int code,
                        const char* reason = "") {
  fprintf(stderr, "%s\n   \"", first_line);
  print_file_name(stderr, name);
  fprintf(stderr, "\"\n%s\n", last_line);
  if (*reason) fprintf(stderr, "%s\n", reason);
  good_bye_on_error(code);
  return code;
}

static int results_not_opened(const char* reason = "") {
  return file_failure("Sorry! Failed to open file", global_output_filename, "as output file.", -102, reason);
}

static int masked_not_opened(const std::string& name, const char* reason = "") {
  return file_failure("Sorry! Failed to open file", name, "as file for the masked sequences.", -103, reason);
}

static int results_not_written() {
  struct stat info;
  if (global_output_filename.empty() && fstat(STDOUT_FILENO, &info) == 0 && S_ISFIFO(info.st_mode)) {
    signal(SIGPIPE, SIG_DFL);  // the reader of a pipe has gone: end quietly
    raise(SIGPIPE);
  }
  const std::string name = global_output_filename.empty() ? "standard output" : global_output_filename;
  return file_failure("Sorry! Failed to write file", name, "as output file.", -104);
}

static int masked_not_written(const std::string& name) {
  return file_failure("Sorry! Failed to write file", name, "as file for the masked sequences.", -104);
}

static bool write_failed(FILE* file) { return fflush(file) != 0 || ferror(file); }

static bool same_regular_file(const struct stat& a, const struct stat& b) {
  return S_ISREG(a.st_mode) && S_ISREG(b.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Opens the results without truncating them before it is known that neither they nor the masked
// file are the input, and that the two differ. Returns 0 or the exit status.
static int open_results(FILE*& results, const std::string& masked_name) {
  struct stat input_file = {};
  struct stat results_file = {};
  struct stat masked_file = {};
  const bool have_input = stat(global_input_filename.c_str(), &input_file) == 0;

  const bool created = !global_output_filename.empty() && access(global_output_filename.c_str(), F_OK) != 0;
  int fd = STDOUT_FILENO;
  if (!global_output_filename.empty()) {
    fd = open(global_output_filename.c_str(), O_WRONLY | O_CREAT, 0666);
    if (fd < 0) return results_not_opened();
  }
  const bool have_results = fstat(fd, &results_file) == 0;
  if (!global_output_filename.empty() && have_input && have_results && same_regular_file(results_file, input_file))
    return results_not_opened("It is the input file.");
  if (global_mask_repeats && stat(masked_name.c_str(), &masked_file) == 0) {
    const bool is_input = have_input && same_regular_file(masked_file, input_file);
    if (is_input || (have_results && same_regular_file(masked_file, results_file))) {
      if (created) unlink(global_output_filename.c_str());
      return masked_not_opened(masked_name, is_input ? "It is the input file." : "It is the file for the results.");
    }
  }

  if (!global_output_filename.empty()) {
    if (S_ISREG(results_file.st_mode) && ftruncate(fd, 0) != 0) return results_not_opened();
    results = fdopen(fd, "w");
    if (!results) return results_not_opened();
  }
  return 0;
}

static void write_masked_record(FILE* masked, CSequence_Mol& record, const std::list<Csat>& repeats) {
  char* const symbols = record.symbols.data();
  for (const Csat& sat : repeats)
    for (const char* p = sat.pos_left; p != sat.pos_right; ++p) symbols[p - symbols] = 'X';
  fprintf(masked, ">%s\n", record.full_name.c_str());
  for (std::size_t i = 0; i < record.symbols.size(); i += 80)
    fprintf(masked, "%.*s\n", static_cast<int>(std::min<std::size_t>(80, record.symbols.size() - i)), symbols + i);
}

// ---- the run ---------------------------------------------------------------------------------

int main(int argc, char** argv) {
  CSequence_Mol record;
  record.symbols.reserve(10000001);
  const auto input = std::make_unique<CFile>();
  FILE* results = stdout;

  signal(SIGPIPE, SIG_IGN);  // a closed pipe is a failed write

  time_analysis_started = time(nullptr);
  quarvo_welcome();

  const int status = read_and_init_parameters(argc, argv);
  if (status != 0) {
    good_bye_on_error(status);
    return status;
  }

  input->open(global_input_filename);
  if (input->failed())
    return file_failure("Sorry! The input file ", global_input_filename,
                        "could not be opened. I guess it does not exist.", -101);

  const std::string masked_name = global_input_filename + ".masked";
  if (const int refused = open_results(results, masked_name); refused != 0) return refused;

  creator_message(stderr, "");
  print_search_parameters(stderr, "");
  fprintf(stderr, "\n\nSearch progress:\n\nTime     - SeqNr - PatLen - Seq-Name\n");
  fprintf(stderr, "------------------------------------------------------------------------\n");
  fflush(stderr);

  creator_message(results, "# ");
  print_search_parameters(results, "# ");
  print_output_format(results, "# ");
  fflush(results);

  FILE* masked = nullptr;
  if (global_mask_repeats) {
    masked = fopen(masked_name.c_str(), "w");
    if (!masked) return masked_not_opened(masked_name);
  }

  if (write_failed(results)) return results_not_written();

  unsigned sequence_number = 0;
  while (!input->at_end()) {
    ++sequence_number;
    record.readFastaSequence(*input);
    if (input->failed() && !input->at_end()) {
      fprintf(stderr, "\n\n");
      fprintf(stderr,
              "An error occurred while reading the input file. It might not be a valid fasta file.\n"
              "File position: line %u\n",
              input->line);
      fflush(stderr);
      return -25;
    }
    if (sequence_number < static_cast<unsigned>(global_sequence_from) ||
        sequence_number > static_cast<unsigned>(global_sequence_to))
      continue;
    report_status(sequence_number, record.short_name.c_str(), global_min_unit_length, 'r');
    update_report_time();

    CSearchController controller(sequence_number, record);
    if (global_search_mode == 0)
      controller.exact_search_2();
    else if (global_search_mode == 1)
      controller.search_exact_and_extend_to_imperfect_repeats();
    else
      controller.complete_imperfect_search();
    std::list<Csat>& found = global_search_mode == 0 ? controller.result_list : controller.work_list;
    CSearchController::remove_hidden(found);
    controller.report_SATList(results, found);
    if (write_failed(results)) return results_not_written();
    if (global_mask_repeats) {
      write_masked_record(masked, record, found);
      if (write_failed(masked)) return masked_not_written(masked_name);
    }
  }

  if (global_mask_repeats && fclose(masked) != 0) return masked_not_written(masked_name);
  if (global_print_sat_mode == 2)
    fprintf(results, "# End tandem repeats\n");
  else if (global_print_sat_mode != 4)
    fprintf(results, "## Finished successfully. ##\n");
  if (write_failed(results) || (results != stdout && fclose(results) != 0)) return results_not_written();
  fprintf(stderr, "\nAnalysis finished successfully.\n\n");
  fprintf(stderr, "Quarvo says goodbye.\n\n");
  fflush(stderr);
  return 0;
}
