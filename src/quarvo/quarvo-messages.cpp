#include "quarvo-messages.h"

#include "global-types-and-parameters.h"
#include "number2cstring.h"
#include "results-texts.h"

std::time_t time_analysis_started;

namespace {

// The notice lines (ownership and terms of use) belong between the greeting and the last two line ends, in the
// greeting's layout.
constexpr const char* welcome_str =
    "\n\n"
    "      Welcome to Quarvo, version 3.3.10,\n"
    "      a microsatellite and satellite search tool.\n"
    "\n\n";

// A full minute passes between two periodic lines, since whole seconds are compared strictly.
constexpr std::time_t report_interval = 59;

std::time_t time_next_status_report = std::time(nullptr);

}  // namespace

void quarvo_welcome(std::FILE* out) { PrintMessage(out, welcome_str); }

void creator_message(std::FILE* out, const char* prefix) {
  PrintMessage(out, prefix, creator_title, "\n", prefix, creator_version, quarvo_version, "\n");
}

void report_status(unsigned sequence_number, const char* name, unsigned pattern_length, char /*mark*/) {
  const auto elapsed = static_cast<unsigned>(std::time(nullptr) - time_analysis_started);
  const auto hours = static_cast<short>(elapsed / 3600);
  const auto minutes = static_cast<short>(elapsed % 3600 / 60);
  const auto seconds = static_cast<short>(elapsed % 60);
  std::fprintf(stderr, "%.2d.%.2d.%.2d - # %3d - %4dbp - %.70s\n", hours, minutes, seconds,
               static_cast<int>(sequence_number), static_cast<int>(pattern_length), name);
  std::fflush(stderr);
}

bool check_report_status() {
  const std::time_t now = std::time(nullptr);
  if (now <= time_next_status_report) return false;
  time_next_status_report = now + report_interval;
  return true;
}

search_progress progress_lines(unsigned sequence_number, const char* name) {
  return {[sequence_number, name](unsigned unit_length) {
            if (check_report_status()) report_status(sequence_number, name, unit_length, 'r');
          },
          [](const char* text) {
            std::fputs(text, stderr);
            std::fflush(stderr);
          }};
}

void update_report_time() { time_next_status_report = std::time(nullptr) + report_interval; }

void print_closing_line(std::FILE* results) {
  const char* const line = closing_line_of_run(global_print_sat_mode);
  if (*line != '\0') std::fprintf(results, "%s\n", line);
}

void good_bye() {
  std::fputs("\nAnalysis finished successfully.\n\nQuarvo says goodbye.\n\n", stderr);
  std::fflush(stderr);
}

void good_bye_on_error(int code) {
  if (code > 0) std::fputs(stopped_by_user.data(), stderr);
  if (code == -1) std::fputs("\n\n", stderr);
  if (code < -1) {
    PrintMessage(stderr, "\nAnalysis has been aborted due to errors. Error number: ", number2str(code), "\n\n");
  }
  std::fflush(stderr);
}
