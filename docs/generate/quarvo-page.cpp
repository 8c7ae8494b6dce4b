// What the man page of quarvo says beside its options.

#include "command-page.h"
#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "quarvo-run.h"

namespace {

// What a shell shows of a status that a program ended with.
std::string shell_status(int status) { return std::to_string(status & 255); }

std::vector<explained_term> exit_statuses() {
  return {
      {"0", "All records were searched and all results were written; also after --help and --version."},
      {"1", "The command line could not be parsed."},
      {"129, 130, 143",
       "The user stopped the run (SIGHUP, SIGINT, SIGTERM; SIGHUP is left alone under nohup). The results end after "
       "the last completed record."},
      {"141", "Standard output is a pipe that was closed."},
      {shell_status(status_read_failed),
       "The input could not be read to its end, or is compressed and cut off or corrupt. The records before the fault "
       "are in the results."},
      {shell_status(status_out_of_memory), "Memory ran out."},
      {shell_status(status_record_too_long), "A record or its header is too long."},
      {shell_status(status_write_failed), "Writing the results, the masked sequences or the help failed."},
      {shell_status(status_masked_not_opened),
       "The file for the masked sequences could not be opened, or is the input or the results file, or the input is "
       "a pipe or device."},
      {shell_status(status_output_not_opened),
       "The results file could not be opened, or is the input file; or standard output or standard error is the input "
       "file (without a message if it is standard error)."},
      {shell_status(status_input_not_opened), "The input file could not be opened."},
      {shell_status(status_malformed_input),
       "The input is empty or no FASTA; the message names the line. The records before it are in the results."},
      {"254", "An option that takes a mode number was given an unknown one."},
      {"255", "Another value of an option was rejected, or no input file was named."},
  };
}

std::vector<explained_term> examples() {
  return {
      {"quarvo genome.fa repeats.txt", "All repeats with units of 1 to 10 symbols, with their alignments:"},
      {"quarvo -M exact -U 6 -s 12 --outputFormat 3 genome.fa repeats.tsv",
       "Perfect microsatellites that score 12 or more, as a table with one line per repeat:"},
      {"quarvo -u 10 -U 100 -s 40 --outputFormat 2 genome.fa repeats.gff", "Minisatellites as GFF:"},
      {"quarvo --maskX --outputFormat 3 genome.fa repeats.tsv",
       "The sequences with their repeats replaced by X, in the file genome.fa.masked:"},
  };
}

}  // namespace

command_page quarvo_page() {
  init_param();
  command_page page = page_of("quarvo", option_table());
  page.summary = "find tandem repeats (microsatellites and minisatellites) in DNA";
  page.description = {
      "Quarvo searches DNA sequences for tandem repeats: stretches in which a unit follows itself back to back, "
      "perfectly or with mismatches, inserted and deleted symbols and short runs of N. It writes every repeat that "
      "passes the thresholds for score, length and perfection, in one of five text formats. Positions in the results "
      "count from 1, and both ends belong to the repeat. Settings and progress go to standard error.",
      "The results file is overwritten without a question, and emptied before the input is read: with two names that "
      "a shell finds for *.fa the second file is lost.",
      "The input may be compressed by gzip or bgzip, whatever its name, and may be a pipe or /dev/stdin (but not with "
      "--maskX).",
      "An option and its value are two words. An option may be given once. File names that begin with \"-\" must "
      "stand after \"--\".",
  };
  page.plain_words = {{"INPUT", "FASTA file to search", false}, {"RESULTS", "results file", true}};
  page.exit_statuses = exit_statuses();
  page.files = {{"INPUT.masked",
                 "With --maskX: the searched sequences, their repeats replaced by X. An older file of that name is "
                 "replaced."}};
  page.examples = examples();
  page.see_also = {"quarvo-convert"};
  page.further_reading =
      "README.md and the pages in docs, installed in the directory share/doc/quarvo beside bin: what the results hold, "
      "how the searches work, what they cost.";
  return page;
}
