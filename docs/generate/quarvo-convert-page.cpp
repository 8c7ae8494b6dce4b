// What the man page of quarvo-convert says beside its options.

#include "command-page.h"
#include "companion.h"
#include "convert-options.h"

namespace {

std::vector<explained_term> exit_statuses() {
  const auto text = [](int status) { return std::to_string(status); };
  return {
      {"0", "The conversion is complete; also after --help and --version."},
      {text(companion_status::command_line), "The command line was refused."},
      {text(companion_status::not_read), "A file could not be opened, or not be read to its end."},
      {text(companion_status::not_results), "The input is no results file in output format 0, 1 or 3."},
      {text(companion_status::unfinished),
       "The results have no closing line: their run failed, was stopped or goes on."},
      {text(companion_status::not_suited),
       "A name of a sequence cannot stand in the output or comes twice, or the lengths do not suit the results."},
      {text(companion_status::not_written), "The output could not be opened or written, or is a file to read."},
      {text(companion_status::out_of_memory), "Memory ran out."},
      {"141", "Standard output is a pipe that was closed."},
  };
}

std::vector<explained_term> examples() {
  return {
      {"quarvo-convert -t bed -o repeats.bed repeats.txt", "Repeats for bedtools and genome browsers:"},
      {"quarvo genome.fa | quarvo-convert -t gff3 - | bgzip > repeats.gff3.gz",
       "From a genome to compressed GFF3 without a file in between:"},
      {"quarvo-convert -t tsv --lengths genome.fa.fai repeats.tsv", "Counts and densities of results in format 3:"},
  };
}

}  // namespace

command_page quarvo_convert_page() {
  command_page page = page_of("quarvo-convert", convert_option_table());
  page.summary = "turn results of quarvo into BED, GFF3, JSON and tables";
  page.description = {
      "quarvo-convert reads a results file of quarvo in output format 0, 1 or 3 and writes its repeats in a format "
      "that "
      "other programs read. It takes nothing but whole results: a file without its closing line is converted as far "
      "as it goes only to standard output, and the exit status says so.",
      "BED and GFF3 name a sequence by its header line up to the first white space, as other programs do. Such names "
      "must differ.",
  };
  page.plain_words = {{"RESULTS", "results file", false}};
  page.exit_statuses = exit_statuses();
  page.files = {unfinished_output()};
  page.examples = examples();
  page.see_also = {"quarvo"};
  page.further_reading =
      "docs/formats-and-other-programs.md in the directory share/doc/quarvo beside bin: every column and key, and what "
      "other programs make of the files.";
  return page;
}
