// What the man page of quarvo-scan says beside its options.

#include "command-page.h"
#include "companion.h"
#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "scan-options.h"

namespace {

std::vector<explained_term> exit_statuses() {
  const auto text = [](int status) { return std::to_string(status); };
  return {
      {"0", "The search is complete; also after --help and --version."},
      {text(companion_status::command_line), "The command line was refused."},
      {text(companion_status::not_read), "An input file could not be opened, or not be read to its end."},
      {text(companion_status::not_suited), "A name of a sequence cannot stand in the output or comes twice."},
      {text(companion_status::not_written),
       "The output could not be opened or written, is a file to read, or exists and --force was not given."},
      {text(companion_status::out_of_memory), "Memory ran out."},
      {text(companion_status::not_fasta), "The input is no FASTA, or has no sequence of a name that was asked for."},
      {"130, 143", "The run was stopped by SIGINT or SIGTERM, as any program is; nothing of it is left."},
      {"141", "Standard output is a pipe that was closed."},
  };
}

std::vector<explained_term> examples() {
  return {
      {"quarvo-scan -U 6 -s 12 -o repeats.bed genome.fa", "Microsatellites of units up to 6 as BED:"},
      {"quarvo-scan -j 8 -o repeats.gff3.gz --index genome.fa", "Compressed GFF3 with its tabix index, by 8 threads:"},
      {"quarvo-scan --mask soft masked.fa -o repeats.tsv genome.fa",
       "A table, and the sequences with their repeats in lower case:"},
  };
}

}  // namespace

command_page quarvo_scan_page() {
  init_param();
  command_page page = page_of("quarvo-scan", scan_option_table());
  page.summary = "search DNA for tandem repeats by all cores";
  page.description = {
      "quarvo-scan finds the repeats that quarvo finds, by many threads: records at once, and stretches of a record at "
      "once. The options of the search are those of quarvo, and --to results writes its results byte for byte, however "
      "many threads there are. All other formats are those of quarvo-convert.",
      "An output file appears under its name when it is complete, and none that exists is replaced without --force. On "
      "a terminal the progress is shown.",
  };
  page.plain_words = {{"FASTA", "FASTA file", false}};
  page.exit_statuses = exit_statuses();
  page.files = {unfinished_output()};
  page.examples = examples();
  page.see_also = {"quarvo", "quarvo-convert"};
  page.further_reading =
      "docs/scan.md in the directory share/doc/quarvo beside bin: how it compares, and how fast it is.";
  return page;
}
