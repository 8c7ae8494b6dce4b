// What the man page of quarvo-report says beside its options.

#include "command-page.h"
#include "companion.h"
#include "report-options.h"

namespace {

std::vector<explained_term> exit_statuses() {
  const auto text = [](int status) { return std::to_string(status); };
  return {
      {"0", "The page is complete; also after --help and --version."},
      {text(companion_status::command_line), "The command line was refused."},
      {text(companion_status::not_read), "The results could not be opened, or not be read to their end."},
      {text(companion_status::not_results), "The input is no results file in output format 0, 1 or 3."},
      {text(companion_status::unfinished),
       "The results have no closing line: their run failed, was stopped or goes on."},
      {text(companion_status::not_written), "The page could not be opened or written, or is the results file."},
      {text(companion_status::out_of_memory), "Memory ran out."},
      {"141", "Standard output is a pipe that was closed."},
  };
}

std::vector<explained_term> examples() {
  return {
      {"quarvo-report -o report.html repeats.txt", "A page of the repeats of a genome:"},
      {"quarvo genome.fa | quarvo-report -o report.html -", "The same without a file in between:"},
  };
}

}  // namespace

command_page quarvo_report_page() {
  command_page page = page_of("quarvo-report", report_option_table());
  page.summary = "make a web page of results of quarvo";
  page.description = {
      "quarvo-report reads a results file of quarvo in output format 0, 1 or 3 and writes one self-contained web page: "
      "settings, counts, distributions, the density of repeats along each sequence, and a table of repeats with "
      "filters and alignments. The page needs no network and nothing beside itself.",
      "A page stays below 20 megabytes. Where the results hold more repeats than fit, those that score highest are "
      "listed and the page says what is left out; counts, distributions and densities cover all of them.",
  };
  page.plain_words = {{"RESULTS", "results file", false}};
  page.exit_statuses = exit_statuses();
  page.files = {unfinished_output()};
  page.examples = examples();
  page.see_also = {"quarvo", "quarvo-convert"};
  page.further_reading =
      "docs/report.md in the directory share/doc/quarvo beside bin: what the page shows and what it leaves out.";
  return page;
}
