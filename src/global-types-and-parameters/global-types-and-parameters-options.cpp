#include "global-types-and-parameters-options.h"

#include <array>

#include "global-types-and-parameters.h"

parsed_option_values parsed_options;

namespace {

constexpr std::array<option_word, 3> search_modes{
    {{"exact", "Search for exact repeats, only"},
     {"extendExact", "Searches for exact repeats and extends them by inserting mismatches and indels"},
     {"imperfect", "Searches directly for imperfect repeats"}}};
constexpr std::array<option_word, 3> report_units{
    {{"0", "asIs"},
     {"1", "Alphabetical normal form"},
     {"2", "Alphabetical normal form also considering the reverse complement"}}};
constexpr std::array<option_word, 3> N_perfection_modes{{{"0", "asMismatch"}, {"1", "asNeutral"}, {"2", "asMatch"}}};
constexpr std::array<option_word, 3> print_modes{
    {{"0", "don't print sequence"}, {"1", "print sequence"}, {"2", "print alignment"}}};
constexpr std::array<option_word, 5> output_formats{{{"0", "Quarvo output format"},
                                                     {"1", "extended Quarvo output format"},
                                                     {"2", "gff - general feature format"},
                                                     {"3", "one-per-line format"},
                                                     {"4", "as fasta sequence"}}};

constexpr const char* unknown_report_unit =
    "Sorry, a problem occured when parsing the command line options. An option value of {value} for the reportUnit "
    "option is unknown.\n\n";

constexpr const char* min_length_rule =
    "The minimum length of a repeat is determined with: maximum( minLength, minLength_a + minLength_b*(unit-length) ).";
constexpr const char* min_score_rule =
    "The minimum score of a repeat is determined with: maximum( minScore, minScore_a + minScore_b*(unit-length) ).";

const std::array<option_row, 29> rows{{
    {.long_name = "sequenceInfoAsComment",
     .destination = &global_sequenceInfoAsComment,
     .summary = "In the GFF and one-per-line output modes, show additional sequence information in the output file as "
                "a comment."},
    {.short_name = "N",
     .long_name = "succN",
     .destination = &global_Ns_allowed_in_a_row,
     .least = 0,
     .summary = "The maximum number of successive N's allowed in a satellite.",
     .help = "Default: {default}."},
    {.long_name = "NsAsMissense",
     .destination = &global_treat_Ns_as_missense,
     .summary = "Treat N's as missense.",
     .help = "Default: Treat N's as neutral with score 0."},
    {.long_name = "preferShorterRepeats",
     .destination = &parsed_options.prefer_shorter_repeats,
     .summary = "For two alignments of the same repeat that have the same score, Quarvo reports by default (since "
                "version 3.3.9) the longer alignment.",
     .help =
         "The longer alignment will have more mismatches/gaps and a lower perfection. With this option, Quarvo will "
         "choose the shorter of the two alignments instead of the longer. Quarvo will run faster with this option."},
    {.long_name = "reportUnit",
     .destination = &global_report_unit_mode,
     .words = report_units,
     .complaint = unknown_report_unit,
     .summary = "Repeat units can be reported in three different modes.",
     .help = "{words}. Default: {default}"},
    {.long_name = "NPerfectionMode",
     .destination = &global_N_and_perfection_mode,
     .words = N_perfection_modes,
     .complaint = unknown_report_unit,
     .summary = "Quarvo provides different modes to treat N's when computing the perfection of a repeat.",
     .help = "{words}. Default: {default}"},
    {.long_name = "printRepeatSeqMode",
     .destination = &global_print_sat_seq_mode,
     .words = print_modes,
     .complaint = "Sorry, a problem occured when parsing the command line options. A printRepeatSeqMode with a value "
                  "of {value} is unknown.\n\n",
     .summary = "Quarvo provides different modes to print the repeat sequence along with its information.",
     .help = "{words}."},
    {.long_name = "outputFormat",
     .destination = &global_print_sat_mode,
     .words = output_formats,
     .complaint = "Sorry, a problem occured when parsing the command line options. An outputFormat with a value of "
                  "{value} is unknown.\n\n",
     .summary = "Quarvo provides different output formats for printing the repeat information.",
     .help = "{words}"},
    {.long_name = "maskX",
     .destination = &global_mask_repeats,
     .summary = "Writes the sequences to a file with the extension \".masked\" in which repeats are masked.",
     .help = "Currently, this option has the sometime unwanted side effect of changing all ambiguity codes to Ns."},
    {.short_name = "f",
     .long_name = "flanking",
     .destination = &global_flanking,
     .least = 0,
     .summary = "If the satellite sequence is printed, this is the number of flanking nucleotides to be printed to the "
                "left and right of it.",
     .help = "Default: {default}"},
    {.long_name = "minPerfection",
     .destination = &global_min_perfection,
     .summary = "Minimum perfection of a satellites.",
     .help = "Default: {default}."},
    {.long_name = "maxPerfection",
     .destination = &global_max_perfection,
     .summary = "Maximum perfection of a satellites.",
     .help = "Default: {default}."},
    {.short_name = "D",
     .long_name = "dontRemoveMostlyOverlapping",
     .destination = &global_remove_mostly_hidden,
     .summary = "Quarvo sometimes finds repeats that partially or completely overlap with other repeats, e.g. if "
                "alignments with alternative repeat patterns exist at the same locus in a sequence.",
     .help =
         "The default is to remove one of any two mostly overlapping repeats in favour of that repeat with the highest "
         "score. With this option, Quarvo reports also repeats that mostly overlap with higher scoring repeats."},
    {.long_name = "firstSeq",
     .destination = &global_sequence_from,
     .summary = "Number of first sequence to be processed in this run."},
    {.long_name = "lastSeq",
     .destination = &global_sequence_to,
     .summary = "Number of last sequence to be processed in this run.",
     .note = "With -1 the search goes on to the last sequence."},
    {.short_name = "R",
     .long_name = "maximum_score_reduction",
     .destination = &global_maximum_scorereduction,
     .summary = "The maximum amount the score can be reduced before search is aborded.",
     .help = "Typical: 6*mismatch-penalty or infinite. Default: {default}",
     .default_name = "infinite"},
    {.short_name = "r",
     .long_name = "recursion",
     .destination = &global_maximum_recursion_depth,
     .least = 1,
     .complaint =
         "Sorry, the recursion depth must be greater than 0.\nA value of 0 would corresponds to a perfect search.\n",
     .summary = "The recursion depth used in the search.",
     .help = "Values in the range 3 to 7 are recommended. A value of 0 implies a search for perfect repeats only.",
     .note = "For perfect repeats only, use --searchMode exact."},
    {.short_name = "u",
     .long_name = "minUnitLen",
     .destination = &global_min_unit_length,
     .summary = "Minimum unit length.",
     .help = "Default: {default}"},
    {.short_name = "U",
     .long_name = "maxUnitLen",
     .destination = &global_max_unit_length,
     .most = largest_unit_length,
     .complaint = "Sorry, the maximum unit length must be smaller or equal to 10000.\n",
     .summary = "Maximum unit length.",
     .help = "Default: {default}"},
    {.long_name = "minLength_b",
     .destination = &global_min_length_bx,
     .summary = min_length_rule,
     .help = "Default value of minLength_b: {default}"},
    {.long_name = "minLength_a",
     .destination = &global_min_length_a,
     .summary = min_length_rule,
     .help = "Default value of minLength_a: {default}"},
    {.short_name = "l",
     .long_name = "minLength",
     .destination = &global_min_length,
     .summary = min_length_rule,
     .help = "Default value of minLength: {default}"},
    {.long_name = "minScore_b",
     .destination = &global_min_score_bx,
     .summary = min_score_rule,
     .help = "Default value of minScore_b: {default}"},
    {.long_name = "minScore_a",
     .destination = &global_min_score_a,
     .summary = min_score_rule,
     .help = "Default value of minScore_a: {default}"},
    {.short_name = "s",
     .long_name = "minScore",
     .destination = &global_min_score,
     .summary = min_score_rule,
     .help = "Default value of minScore: {default}"},
    {.short_name = "m",
     .long_name = "mismatchScore",
     .destination = &global_mismatch_score,
     .most = -2,
     .complaint = "Sorry, the mismatch score must be smaller or equal to -2.\n",
     .summary = "Score for mismatch - must be negative.",
     .help = "Default: {default}. Match score is fixed to one."},
    {.short_name = "g",
     .long_name = "indelScore",
     .destination = &global_indel_score,
     .most = -2,
     .complaint = "Sorry, the indel score must be smaller or equal to -2.\n",
     .summary = "Score for indels - must be negative.",
     .help = "Default: {default}. Match score is fixed to one."},
    {.short_name = "M",
     .long_name = "searchMode",
     .destination = word_destination{&global_search_mode},
     .words = search_modes,
     .summary = "Quarvo provides three different search modes.",
     .help = "{words}."},
    {.long_name = "iofiles",
     .destination = &parsed_options.iofiles,
     .label = "Input and output filenames",
     .summary = "Quarvo requires either one or two file names as parameters.",
     .help = "The first must be the input file in FASTA format. If a second file is specified, output is written to "
             "it. If no second file is given, output is written to the console. "},
}};

}  // namespace

std::span<const option_row> option_table() { return rows; }
