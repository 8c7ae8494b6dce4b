#include "scan-options.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>

#include "COutputFile.h"
#include "companion.h"
#include "conversion-settings.h"
#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "option-parser.h"

scan_option_values scan_options;

namespace {

constexpr std::array<option_word, 4> maskings{
    {{"none", "No file"}, {"soft", "Repeats in lower case"}, {"n", "Repeats as N"}, {"x", "Repeats as X"}}};

constexpr const char* jsonl = "jsonl";

// The formats of quarvo-convert, but for the masked FASTA, for which there is --mask.
const std::vector<option_word>& output_words() {
  static const std::vector<option_word> all = [] {
    std::vector<option_word> words{{"auto", "By the ending of the output's name, else results"},
                                   {"results", "What quarvo writes"},
                                   {jsonl, "The same as json"}};
    std::ranges::copy_if(conversion_formats, std::back_inserter(words),
                         [](const option_word& format) { return std::string_view(format.word) != "mask"; });
    return words;
  }();
  return all;
}

// From the place of a word to what stands in scan-options.h.
int output_of_word(int place) {
  if (place == by_extension || place == to_results) return place;
  const std::string_view word = output_words()[static_cast<std::size_t>(place)].word;
  const auto format = std::ranges::find(conversion_formats, word == jsonl ? "json" : word,
                                        [](const option_word& one) { return std::string_view(one.word); });
  return first_conversion + static_cast<int>(format - conversion_formats.begin());
}

std::vector<option_row> own_rows() {
  return {
      {.short_name = "q",
       .long_name = "quiet",
       .destination = &scan_options.quiet,
       .summary = "Write nothing to standard error but errors."},
      {.long_name = "progress",
       .destination = &scan_options.progress,
       .summary = "Write the progress as lines, also where standard error is no terminal."},
      {.short_name = "j",
       .long_name = "threads",
       .destination = &scan_options.threads,
       .most = 1024,
       .complaint = "Sorry, --threads must be 1024 or less.\n",
       .summary = "The number of threads.",
       .help = "The results do not depend on it. Default: {default}.",
       .default_name = "all cores that this process may use"},
      {.long_name = "sequences-from",
       .destination = &scan_options.sequences_from,
       .label = file_label,
       .summary = "Search only the sequences that this file names, one name a line."},
      {.long_name = "sequences",
       .destination = &scan_options.sequences,
       .label = "names",
       .summary = "Search only the sequences of these names, with commas between them.",
       .help = "A name ends at the first white space of its header line."},
      {.long_name = "masked-file",
       .destination = &scan_options.masked,
       .label = file_label,
       .summary = "The file for the masked sequences. Its name may also follow the word of --mask."},
      {.long_name = "mask",
       .destination = word_destination{&scan_options.mask},
       .words = maskings,
       .summary =
           "Write the sequences with the repeats masked, to the file whose name follows, as in --mask soft masked.fa.",
       .help = "{words}. Outside repeats all letters and their case are those of the input."},
      {.long_name = "index",
       .destination = &scan_options.index,
       .summary = "Write the tabix index of the output, which must be BED or GFF3 and end in .gz."},
      {.long_name = "force", .destination = &scan_options.force, .summary = "Replace output files that exist."},
      {.short_name = "o",
       .long_name = "output",
       .destination = &scan_options.output,
       .label = file_label,
       .summary = "The file to write, compressed by blocks (BGZF) if its name ends in .gz.",
       .help =
           "It appears under this name when it is complete. A file that exists is kept, and the run refused, unless "
           "--force is given. Default: standard output."},
      {.short_name = "t",
       .long_name = "to",
       .destination = word_destination{&scan_options.to},
       .words = output_words(),
       .summary = "The format to write.",
       .help = "{words}."},
      {.long_name = "inputs",
       .destination = &scan_options.inputs,
       .label = "FASTA files",
       .is_required = true,
       .summary = "The files to search, plain or compressed by gzip or bgzip; \"-\" is standard input."},
  };
}

std::vector<option_row> all_rows() {
  std::vector<option_row> rows;
  std::ranges::remove_copy_if(option_table(), std::back_inserter(rows), is_plain_words);
  const std::vector<option_row> own = own_rows();
  rows.insert(rows.end(), own.begin(), own.end());
  return rows;
}

constexpr const char* short_help =
    "quarvo-scan searches DNA for tandem repeats (SSR, STR, VNTR) by all cores.\n"
    "\n"
    "  quarvo-scan [option ...] FASTA ...\n"
    "\n"
    "  quarvo-scan -U 6 -s 12 -o repeats.bed genome.fa\n"
    "      microsatellites of units up to 6 as BED\n"
    "  quarvo-scan -U 100 -j 8 -o repeats.gff3.gz --index genome.fa.gz\n"
    "      units up to 100 by 8 threads, compressed GFF3 with its tabix index\n"
    "  zcat reads.fa.gz | quarvo-scan --mask soft masked.fa -t table - > repeats.tsv\n"
    "      a table, and the sequences with their repeats in lower case\n"
    "\n"
    "  -o, --output FILE     the file to write; its ending tells the format\n"
    "  -t, --to FORMAT       results, bed, gff3, jsonl, table, fasta ...\n"
    "      --force           replace files that exist\n"
    "      --index           write the tabix index too\n"
    "  -j, --threads N       threads; otherwise all cores\n"
    "  -u, -U N              shortest and longest unit\n"
    "  -s, -l N              least score and least length of a repeat\n"
    "  -M MODE               exact, extendExact or imperfect\n"
    "      --mask KIND FILE  masked sequences: soft, n or x\n"
    "      --sequences NAMES only these sequences\n"
    "  -q, --quiet           say nothing but errors\n"
    "All options: quarvo-scan --help, or man quarvo-scan.\n";

int print_short_help() {
  COutputFile out("as output file.");
  out.claim_standard_output();
  std::fputs(short_help, out.stream());
  if (out.close()) return 0;
  out.report_write_failure();
  return companion_status::not_written;
}

// Whether the word is one of a kind of mask, capital or small, and not of the first of them, which writes no file.
bool makes_file(const std::string& word) {
  return std::any_of(maskings.begin() + 1, maskings.end(),
                     [&](const option_word& kind) { return strcasecmp(kind.word, word.c_str()) == 0; });
}

// The words of the command line as the parser takes them: "-" is standard input, and a file may follow --mask KIND.
std::vector<std::string> parser_words(int argc, char** argv) {
  std::vector<std::string> words;
  bool are_options = true;
  for (int i = 0; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "--") are_options = false;
    words.push_back(word == "-" ? "/dev/stdin" : word);
    if (!are_options || word != "--mask" || i + 1 == argc) continue;
    const std::string kind = argv[++i];
    words.push_back(kind);
    if (makes_file(kind) && i + 1 < argc && (argv[i + 1][0] != '-' || argv[i + 1][1] == '\0')) {
      words.insert(words.end(), {"--masked-file", argv[++i]});
    }
  }
  return words;
}

int format_of_extension(std::string name) {
  static const std::map<std::string, int, std::less<>> formats{
      {".bed", first_conversion + to_bed},    {".gff3", first_conversion + to_gff3},
      {".gff", first_conversion + to_gff3},   {".json", first_conversion + to_json},
      {".jsonl", first_conversion + to_json}, {".tsv", first_conversion + to_table},
      {".fa", first_conversion + to_fasta},   {".fasta", first_conversion + to_fasta}};
  if (name.ends_with(".gz")) name.resize(name.size() - 3);
  const std::size_t dot = name.rfind('.');
  const auto found = dot == std::string::npos ? formats.end() : formats.find(name.substr(dot));
  return found == formats.end() ? to_results : found->second;
}

int refuse(const char* text) {
  std::fputs(text, stderr);
  return companion_status::command_line;
}

// The masked file of quarvo: beside the one input, replaced if it exists, its other symbols as they are searched.
int settle_maskX() {
  if (scan_options.mask != no_mask || scan_options.inputs.size() != 1 || scan_options.inputs[0].starts_with("/dev/")) {
    return refuse("Sorry, --maskX is for one file of input, and not together with --mask.\n");
  }
  scan_options.mask = X_mask;
  scan_options.masked = scan_options.inputs[0] + ".masked";
  return 0;
}

// What the values must be together.
int check_values() {
  scan_options.to = output_of_word(scan_options.to);
  if (scan_options.to == by_extension) scan_options.to = format_of_extension(scan_options.output);
  const bool is_indexable =
      scan_options.to == first_conversion + to_bed || scan_options.to == first_conversion + to_gff3;
  if (scan_options.index && (!is_indexable || !scan_options.output.ends_with(".gz"))) {
    return refuse("Sorry, --index is for BED and GFF3 in a file whose name ends in .gz, such as -o repeats.bed.gz.\n");
  }
  if (scan_options.to >= first_conversion &&
      (global_print_sat_mode == gff_format || global_print_sat_mode == fasta_format)) {
    return refuse("Sorry, --outputFormat 2 and 4 are for --to results alone.\n");
  }
  if ((scan_options.mask == no_mask) != scan_options.masked.empty()) {
    return refuse("Sorry, --mask takes a kind and a file: --mask soft masked.fa.\n");
  }
  return global_mask_repeats ? settle_maskX() : 0;
}

}  // namespace

std::span<const option_row> scan_option_table() {
  static const std::vector<option_row> rows = all_rows();
  return rows;
}

int read_scan_options(int argc, char** argv) {
  init_param();
  parsed_options = {};
  scan_options = {};
  std::vector<std::string> words = parser_words(argc, argv);
  const auto end_of_options = std::ranges::find(words, "--");
  if (std::find(words.begin(), end_of_options, "-h") != end_of_options) std::exit(print_short_help());
  std::vector<char*> pointers;
  pointers.reserve(words.size());
  for (std::string& word : words) pointers.push_back(word.data());
  if (!read_options(scan_option_table(), scan_description, companion_status::not_written,
                    static_cast<int>(pointers.size()), pointers.data())) {
    return companion_status::command_line;
  }
  const parameter_complaint complaint = check_parameters();
  return complaint.status == 0 ? check_values() : refuse(complaint.text.c_str());
}
