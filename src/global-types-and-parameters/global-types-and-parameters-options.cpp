#include "global-types-and-parameters-options.h"

#include <array>

#include "global-types-and-parameters.h"

parsed_option_values parsed_options;

namespace {

constexpr std::array<const char*, 3> words{"exact", "extendExact", "imperfect"};

constexpr const char* min_length_rule_b =
    "The minimum length of a repeat is determined with: maximum( minLength, minLength_a + minLength_b*(unit-length) ). "
    "Default value of minLength_b: 0";
constexpr const char* min_length_rule_a =
    "The minimum length of a repeat is determined with: maximum( minLength, minLength_a + minLength_b*(unit-length) ). "
    "Default value of minLength_a: 0";
constexpr const char* min_length_rule =
    "The minimum length of a repeat is determined with: maximum( minLength, minLength_a + minLength_b*(unit-length) ). "
    "Default value of minLength: 0";
constexpr const char* min_score_rule_b =
    "The minimum score of a repeat is determined with: maximum( minScore, minScore_a + minScore_b*(unit-length) ). "
    "Default value of minScore_b: 1";
constexpr const char* min_score_rule_a =
    "The minimum score of a repeat is determined with: maximum( minScore, minScore_a + minScore_b*(unit-length) ). "
    "Default value of minScore_a: 0";
constexpr const char* min_score_rule =
    "The minimum score of a repeat is determined with: maximum( minScore, minScore_a + minScore_b*(unit-length) ). "
    "Default value of minScore: 6";

const std::array<option_row, 29> rows{{
    {"", "sequenceInfoAsComment", &global_sequenceInfoAsComment,
     "In the GFF and one-per-line output modes, show additional sequence information in the output file as a comment."},
    {"N", "succN", &global_Ns_allowed_in_a_row,
     "The maximum number of successive N's allowed in a satellite. Default: 2."},
    {"", "NsAsMissense", &global_treat_Ns_as_missense,
     "Treat N's as missense. Default: Treat N's as neutral with score 0."},
    {"", "preferShorterRepeats", &parsed_options.prefer_shorter_repeats,
     "For two alignments of the same repeat that have the same score, Quarvo reports by default (since version 3.3.9) "
     "the longer alignment. The longer alignment will have more mismatches/gaps and a lower perfection. With this "
     "option, Quarvo will choose the shorter of the two alignments instead of the longer. Quarvo will run faster with "
     "this option."},
    {"", "reportUnit", &parsed_options.report_unit,
     "Repeat units can be reported in three different modes. 0: asIs, 1: Alphabetical normal form, 2: Alphabetical "
     "normal form also considering the reverse complement. Default: 2"},
    {"", "NPerfectionMode", &parsed_options.N_perfection_mode,
     "Quarvo provides different modes to treat N's when computing the perfection of a repeat. 0: asMismatch, 1: "
     "asNeutral, 2: asMatch. Default: 0"},
    {"", "printRepeatSeqMode", &parsed_options.print_repeat_seq_mode,
     "Quarvo provides different modes to print the repeat sequence along with its information. 0: don't print "
     "sequence, 1: print sequence, 2: print alignment."},
    {"", "outputFormat", &parsed_options.output_format,
     "Quarvo provides different output formats for printing the repeat information. 0: Quarvo output format, 1: "
     "extended Quarvo output format, 2: gff - general feature format, 3: one-per-line format, 4: as fasta sequence"},
    {"", "maskX", &global_mask_repeats,
     "Writes the sequences to a file with the extension \".masked\" in which repeats are masked. Currently, this "
     "option "
     "has the sometime unwanted side effect of changing all ambiguity codes to Ns."},
    {"f", "flanking", &global_flanking,
     "If the satellite sequence is printed, this is the number of flanking nucleotides to be printed to the left and "
     "right of it. Default: 0"},
    {"", "minPerfection", &global_min_perfection, "Minimum perfection of a satellites. Default: 0."},
    {"", "maxPerfection", &global_max_perfection, "Maximum perfection of a satellites. Default: 100."},
    {"D", "dontRemoveMostlyOverlapping", &global_remove_mostly_hidden,
     "Quarvo sometimes finds repeats that partially or completely overlap with other repeats, e.g. if alignments with "
     "alternative repeat patterns exist at the same locus in a sequence. The default is to remove one of any two "
     "mostly "
     "overlapping repeats in favour of that repeat with the highest score. With this option, Quarvo reports also "
     "repeats that mostly overlap with higher scoring repeats."},
    {"", "firstSeq", &global_sequence_from, "Number of first sequence to be processed in this run."},
    {"", "lastSeq", &global_sequence_to, "Number of last sequence to be processed in this run."},
    {"R", "maximum_score_reduction", &global_maximum_scorereduction,
     "The maximum amount the score can be reduced before search is aborded. Typical: 6*mismatch-penalty or infinite. "
     "Default: infinite"},
    {"r", "recursion", &global_maximum_recursion_depth,
     "The recursion depth used in the search. Values in the range 3 to 7 are recommended. A value of 0 implies a "
     "search "
     "for perfect repeats only."},
    {"u", "minUnitLen", &global_min_unit_length, "Minimum unit length. Default: 1"},
    {"U", "maxUnitLen", &global_max_unit_length, "Maximum unit length. Default: 10"},
    {"", "minLength_b", &global_min_length_bx, min_length_rule_b},
    {"", "minLength_a", &global_min_length_a, min_length_rule_a},
    {"l", "minLength", &global_min_length, min_length_rule},
    {"", "minScore_b", &global_min_score_bx, min_score_rule_b},
    {"", "minScore_a", &global_min_score_a, min_score_rule_a},
    {"s", "minScore", &global_min_score, min_score_rule},
    {"m", "mismatchScore", &global_mismatch_score,
     "Score for mismatch - must be negative. Default: -5. Match score is fixed to one."},
    {"g", "indelScore", &global_indel_score,
     "Score for indels - must be negative. Default: -5. Match score is fixed to one."},
    {"M", "searchMode", &parsed_options.search_mode,
     "Quarvo provides three different search modes. exact: Search for exact repeats, only. extendExact: Searches for "
     "exact repeats and extends them by inserting mismatches and indels. imperfect: Searches directly for imperfect "
     "repeats."},
    {"", "iofiles", &parsed_options.iofiles,
     "Quarvo requires either one or two file names as parameters. The first must be the input file in FASTA format. If "
     "a second file is specified, output is written to it. If no second file is given, output is written to the "
     "console. "},
}};

struct value_labels {
  const char* operator()(const bool*) const { return ""; }
  const char* operator()(const int*) const { return "int"; }
  const char* operator()(const unsigned*) const { return "int"; }
  const char* operator()(const float*) const { return "float"; }
  const char* operator()(const std::string*) const { return "exact|extendExact|imperfect"; }
  const char* operator()(const std::vector<std::string>*) const { return "Input and output filenames"; }
};

}  // namespace

std::span<const option_row> option_table() { return rows; }

std::span<const char* const> search_mode_words() { return words; }

void init_parsed_options() {
  parsed_options.prefer_shorter_repeats = global_prefer_longer_repeat == 0;
  parsed_options.report_unit = global_report_unit_mode;
  parsed_options.N_perfection_mode = global_N_and_perfection_mode;
  parsed_options.print_repeat_seq_mode = global_print_sat_seq_mode;
  parsed_options.output_format = global_print_sat_mode;
  parsed_options.search_mode = words[search_mode_imperfect];
  parsed_options.iofiles.clear();
}

const char* value_label(const option_row& option) { return std::visit(value_labels{}, option.destination); }
