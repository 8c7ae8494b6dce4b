#include "parameters.h"

#include <tclap/CmdLine.h>

#include <cctype>
#include <cstring>
#include <vector>

std::string global_input_filename;
std::string global_output_filename;
int global_sequence_from;
int global_sequence_to;
int global_search_mode;
int global_N_and_perfection_mode;
int global_report_unit_mode;
int global_print_sat_seq_mode;
int global_print_sat_mode;
bool global_sequenceInfoAsComment;
int global_flanking;
int global_maximum_recursion_depth;
int global_maximum_scorereduction;
unsigned global_min_unit_length;
unsigned global_max_unit_length;
bool global_treat_Ns_as_missense;
int global_Ns_allowed_in_a_row;
int global_min_score;
int global_min_score_a;
float global_min_score_bx;
int global_min_length;
int global_min_length_a;
float global_min_length_bx;
float global_min_perfection;
float global_max_perfection;
int global_mismatch_score;
int global_indel_score;
int global_prefer_longer_repeat;
bool global_remove_mostly_hidden;
bool global_mask_repeats;

namespace {

void init_param() {
  global_sequence_from = 1;
  global_sequence_to = -1;
  global_search_mode = 2;
  global_N_and_perfection_mode = 0;
  global_report_unit_mode = 2;
  global_print_sat_seq_mode = 2;
  global_print_sat_mode = 1;
  global_sequenceInfoAsComment = false;
  global_flanking = 0;
  global_maximum_recursion_depth = 5;
  global_maximum_scorereduction = 2147483647;
  global_min_unit_length = 1;
  global_max_unit_length = 10;
  global_treat_Ns_as_missense = false;
  global_Ns_allowed_in_a_row = 2;
  global_min_score = 6;
  global_min_score_a = 0;
  global_min_score_bx = 1.0f;
  global_min_length = 0;
  global_min_length_a = 0;
  global_min_length_bx = 0.0f;
  global_min_perfection = 0.0f;
  global_max_perfection = 100.0f;
  global_mismatch_score = -5;
  global_indel_score = -5;
  global_prefer_longer_repeat = 1;
  global_remove_mostly_hidden = true;
  global_mask_repeats = false;
}

// The library would take any word as a file name; one that begins with '-' is an unknown option
// unless it follows "--".
class CFileNamesArg : public TCLAP::UnlabeledMultiArg<std::string> {
 public:
  using TCLAP::UnlabeledMultiArg<std::string>::UnlabeledMultiArg;
  bool processArg(int* i, std::vector<std::string>& args) override {
    const std::string& word = args[static_cast<std::size_t>(*i)];
    if (!TCLAP::Arg::ignoreRest() && !word.empty() && word[0] == '-')
      throw TCLAP::CmdLineParseException("Couldn't find match for argument", word);
    return TCLAP::UnlabeledMultiArg<std::string>::processArg(i, args);
  }
};

// All steps that need the parser or its option objects.
int parse_command_line(int argc, char** argv) {
  try {
    TCLAP::CmdLine cmd("This program searches for tandemly repeated patterns in DNA sequences.", ' ', "3.3.10");

    TCLAP::SwitchArg sequence_info("", "sequenceInfoAsComment",
                                   "In the GFF and one-per-line output modes, show additional sequence information in "
                                   "the output file as a comment.",
                                   global_sequenceInfoAsComment);
    cmd.add(sequence_info);
    TCLAP::ValueArg<int> succ_N("N", "succN",
                                "The maximum number of successive N's allowed in a satellite. Default: 2.", false,
                                global_Ns_allowed_in_a_row, "int");
    cmd.add(succ_N);
    TCLAP::SwitchArg Ns_as_missense("", "NsAsMissense",
                                    "Treat N's as missense. Default: Treat N's as neutral with score 0.",
                                    global_treat_Ns_as_missense);
    cmd.add(Ns_as_missense);
    TCLAP::SwitchArg prefer_shorter(
        "", "preferShorterRepeats",
        "For two alignments of the same repeat that have the same score, Quarvo reports by default (since version "
        "3.3.9) the longer alignment. The longer alignment will have more mismatches/gaps and a lower perfection. With "
        "this option, Quarvo will choose the shorter of the two alignments instead of the longer. Quarvo will run "
        "faster with this option.",
        !global_prefer_longer_repeat);
    cmd.add(prefer_shorter);
    TCLAP::ValueArg<int> report_unit("", "reportUnit",
                                     "Repeat units can be reported in three different modes. 0: asIs, 1: Alphabetical "
                                     "normal form, 2: Alphabetical normal form also considering the reverse "
                                     "complement. Default: 2",
                                     false, global_report_unit_mode, "int");
    cmd.add(report_unit);
    TCLAP::ValueArg<int> N_perfection_mode("", "NPerfectionMode",
                                           "Quarvo provides different modes to treat N's when computing the perfection "
                                           "of a repeat. 0: asMismatch, 1: asNeutral, 2: asMatch. Default: 0",
                                           false, global_N_and_perfection_mode, "int");
    cmd.add(N_perfection_mode);
    TCLAP::ValueArg<int> print_seq_mode("", "printRepeatSeqMode",
                                        "Quarvo provides different modes to print the repeat sequence along with its "
                                        "information. 0: don't print sequence, 1: print sequence, 2: print alignment.",
                                        false, global_print_sat_seq_mode, "int");
    cmd.add(print_seq_mode);
    TCLAP::ValueArg<int> output_format(
        "", "outputFormat",
        "Quarvo provides different output formats for printing the repeat information. 0: Quarvo output format, 1: "
        "extended Quarvo output format, 2: gff - general feature format, 3: one-per-line format, 4: as fasta sequence",
        false, global_print_sat_mode, "int");
    cmd.add(output_format);
    TCLAP::SwitchArg mask_X(
        "", "maskX",
        "Writes the sequences to a file with the extension \".masked\" in which repeats are masked. "
        "Currently, this option has the sometime unwanted side effect of changing all ambiguity "
        "codes to Ns.",
        global_mask_repeats);
    cmd.add(mask_X);
    TCLAP::ValueArg<int> flanking("f", "flanking",
                                  "If the satellite sequence is printed, this is the number of flanking nucleotides to "
                                  "be printed to the left and right of it. Default: 0",
                                  false, global_flanking, "int");
    cmd.add(flanking);
    TCLAP::ValueArg<float> min_perfection("", "minPerfection", "Minimum perfection of a satellites. Default: 0.", false,
                                          global_min_perfection, "float");
    cmd.add(min_perfection);
    TCLAP::ValueArg<float> max_perfection("", "maxPerfection", "Maximum perfection of a satellites. Default: 100.",
                                          false, global_max_perfection, "float");
    cmd.add(max_perfection);
    TCLAP::SwitchArg dont_remove(
        "D", "dontRemoveMostlyOverlapping",
        "Quarvo sometimes finds repeats that partially or completely overlap with other repeats, e.g. if alignments "
        "with alternative repeat patterns exist at the same locus in a sequence. The default is to remove one of any "
        "two mostly overlapping repeats in favour of that repeat with the highest score. With this option, Quarvo "
        "reports also repeats that mostly overlap with higher scoring repeats.",
        global_remove_mostly_hidden);
    cmd.add(dont_remove);
    TCLAP::ValueArg<int> first_seq("", "firstSeq", "Number of first sequence to be processed in this run.", false,
                                   global_sequence_from, "int");
    cmd.add(first_seq);
    TCLAP::ValueArg<int> last_seq("", "lastSeq", "Number of last sequence to be processed in this run.", false,
                                  global_sequence_to, "int");
    cmd.add(last_seq);
    TCLAP::ValueArg<int> maximum_score_reduction(
        "R", "maximum_score_reduction",
        "The maximum amount the score can be reduced before search is aborded. Typical: 6*mismatch-penalty or "
        "infinite. Default: infinite",
        false, global_maximum_scorereduction, "int");
    cmd.add(maximum_score_reduction);
    TCLAP::ValueArg<int> recursion("r", "recursion",
                                   "The recursion depth used in the search. Values in the range 3 to 7 are "
                                   "recommended. A value of 0 implies a search for perfect repeats only.",
                                   false, global_maximum_recursion_depth, "int");
    cmd.add(recursion);
    TCLAP::ValueArg<unsigned> min_unit_len("u", "minUnitLen", "Minimum unit length. Default: 1", false,
                                           global_min_unit_length, "int");
    cmd.add(min_unit_len);
    TCLAP::ValueArg<unsigned> max_unit_len("U", "maxUnitLen", "Maximum unit length. Default: 10", false,
                                           global_max_unit_length, "int");
    cmd.add(max_unit_len);
    const std::string length_rule =
        "The minimum length of a repeat is determined with: maximum( minLength, "
        "minLength_a + minLength_b*(unit-length) ). Default value of ";
    TCLAP::ValueArg<float> min_length_b("", "minLength_b", length_rule + "minLength_b: 0", false, global_min_length_bx,
                                        "float");
    cmd.add(min_length_b);
    TCLAP::ValueArg<int> min_length_a("", "minLength_a", length_rule + "minLength_a: 0", false, global_min_length_a,
                                      "int");
    cmd.add(min_length_a);
    TCLAP::ValueArg<int> min_length("l", "minLength", length_rule + "minLength: 0", false, global_min_length, "int");
    cmd.add(min_length);
    const std::string score_rule =
        "The minimum score of a repeat is determined with: maximum( minScore, minScore_a + "
        "minScore_b*(unit-length) ). Default value of ";
    TCLAP::ValueArg<float> min_score_b("", "minScore_b", score_rule + "minScore_b: 1", false, global_min_score_bx,
                                       "float");
    cmd.add(min_score_b);
    TCLAP::ValueArg<int> min_score_a("", "minScore_a", score_rule + "minScore_a: 0", false, global_min_score_a, "int");
    cmd.add(min_score_a);
    TCLAP::ValueArg<int> min_score("s", "minScore", score_rule + "minScore: 6", false, global_min_score, "int");
    cmd.add(min_score);
    TCLAP::ValueArg<int> mismatch_score(
        "m", "mismatchScore", "Score for mismatch - must be negative. Default: -5. Match score is fixed to one.", false,
        global_mismatch_score, "int");
    cmd.add(mismatch_score);
    TCLAP::ValueArg<int> indel_score("g", "indelScore",
                                     "Score for indels - must be negative. Default: -5. Match score is fixed to one.",
                                     false, global_indel_score, "int");
    cmd.add(indel_score);
    std::vector<std::string> mode_words = {"exact", "extendExact", "imperfect"};
    TCLAP::ValuesConstraint<std::string> allowed_modes(mode_words);
    TCLAP::ValueArg<std::string> search_mode(
        "M", "searchMode",
        "Quarvo provides three different search modes. exact: Search for exact repeats, only. extendExact: Searches "
        "for exact repeats and extends them by inserting mismatches and indels. imperfect: Searches directly for "
        "imperfect repeats.",
        false, "imperfect", &allowed_modes);
    cmd.add(search_mode);
    CFileNamesArg iofiles("iofiles",
                          "Quarvo requires either one or two file names as parameters. The first must be the input "
                          "file in FASTA format. If a second file is specified, output is written to it. If no second "
                          "file is given, output is written to the console. ",
                          false, "Input and output filenames");
    cmd.add(iofiles);

    cmd.parse(argc, argv);

    const std::vector<std::string>& names = iofiles.getValue();
    if (names.empty()) {
      fprintf(stderr, "Error: No input file has been specified. Type %s --help for more information.\n", argv[0]);
      return -1;
    }
    if (names.size() == 1)
      global_input_filename = names[0];
    else if (names.size() == 2) {
      global_input_filename = names[0];
      global_output_filename = names[1];
    }

    global_sequence_from = first_seq.getValue();
    global_sequence_to = last_seq.getValue();
    global_maximum_recursion_depth = recursion.getValue();
    global_maximum_scorereduction = maximum_score_reduction.getValue();
    global_Ns_allowed_in_a_row = succ_N.getValue();
    global_treat_Ns_as_missense = Ns_as_missense.getValue();
    global_remove_mostly_hidden = dont_remove.getValue();
    global_min_unit_length = min_unit_len.getValue();
    global_max_unit_length = max_unit_len.getValue();
    global_min_length = min_length.getValue();
    global_min_length_a = min_length_a.getValue();
    global_min_length_bx = min_length_b.getValue();
    global_min_score = min_score.getValue();
    global_min_score_a = min_score_a.getValue();
    global_min_score_bx = min_score_b.getValue();
    global_min_perfection = min_perfection.getValue();
    global_max_perfection = max_perfection.getValue();
    global_mismatch_score = mismatch_score.getValue();
    global_indel_score = indel_score.getValue();
    global_prefer_longer_repeat = prefer_shorter.getValue() ? 0 : 1;
    global_flanking = flanking.getValue();
    global_mask_repeats = mask_X.getValue();

    if (search_mode.getValue() == "exact")
      global_search_mode = 0;
    else if (search_mode.getValue() == "extendExact")
      global_search_mode = 1;
    else
      global_search_mode = 2;

    global_sequenceInfoAsComment = sequence_info.getValue();

    const char* const problem = "Sorry, a problem occured when parsing the command line options.";
    if (output_format.getValue() < 0 || output_format.getValue() > 4) {
      fprintf(stderr, "%s An outputFormat with a value of %d is unknown.\n\n", problem, output_format.getValue());
      return -2;
    }
    global_print_sat_mode = output_format.getValue();
    if (print_seq_mode.getValue() < 0 || print_seq_mode.getValue() > 2) {
      fprintf(stderr, "%s A printRepeatSeqMode with a value of %d is unknown.\n\n", problem, print_seq_mode.getValue());
      return -2;
    }
    global_print_sat_seq_mode = print_seq_mode.getValue();
    // The text names reportUnit for the N perfection mode as well.
    if (N_perfection_mode.getValue() < 0 || N_perfection_mode.getValue() > 2) {
      fprintf(stderr, "%s An option value of %d for the reportUnit option is unknown.\n\n", problem,
              N_perfection_mode.getValue());
      return -2;
    }
    global_N_and_perfection_mode = N_perfection_mode.getValue();
    if (report_unit.getValue() < 0 || report_unit.getValue() > 2) {
      fprintf(stderr, "%s An option value of %d for the reportUnit option is unknown.\n\n", problem,
              report_unit.getValue());
      return -2;
    }
    global_report_unit_mode = report_unit.getValue();
    return 0;
  } catch (TCLAP::ArgException& e) {
    fprintf(stderr, "Error: %s for arg %s\n", e.error().c_str(), e.argId().c_str());
    return -1;
  }
}

int check_parameters() {
  float s = static_cast<float>(global_min_score_a) + global_min_score_bx;
  if (!(static_cast<float>(global_min_score) < s)) s = static_cast<float>(global_min_score);
  float l = static_cast<float>(global_min_length_a) + global_min_length_bx;
  if (!(static_cast<float>(global_min_length) < l)) l = static_cast<float>(global_min_length);
  if (s < 2.0f && l < 2.0f) {
    fprintf(stderr, "Sorry, either the minimum score or the minimum length must be larger.\n");
    return -1;
  }
  if (global_mismatch_score > -2) {
    fprintf(stderr, "Sorry, the mismatch score must be smaller or equal to -2.\n");
    return -1;
  }
  if (global_indel_score > -2) {
    fprintf(stderr, "Sorry, the indel score must be smaller or equal to -2.\n");
    return -1;
  }
  if (global_Ns_allowed_in_a_row < 0) global_Ns_allowed_in_a_row = 0;
  if (global_flanking < 0) global_flanking = 0;
  if (global_maximum_recursion_depth <= 0) {
    fprintf(stderr,
            "Sorry, the recursion depth must be greater than 0.\n"
            "A value of 0 would corresponds to a perfect search.\n");
    return -1;
  }
  if (global_max_unit_length < global_min_unit_length) {
    fprintf(stderr,
            "I think you have made a mistake here: The maximum unit length must be greater\n"
            "or equal to the minimum unit length.\n");
    return -1;
  }
  if (global_max_unit_length > 10000) {
    fprintf(stderr, "Sorry, the maximum unit length must be smaller or equal to 10000.\n");
    return -1;
  }
  return 0;
}

// The end of the conversion that begins behind a '%' at p, or null if none is complete.
const char* end_of_conversion(const char* p) {
  while (*p != '\0' && strchr("-+ #0", *p)) ++p;
  if (*p == '*')
    ++p;
  else
    while (isdigit(static_cast<unsigned char>(*p))) ++p;
  if (*p == '.') {
    ++p;
    if (*p == '*')
      ++p;
    else
      while (isdigit(static_cast<unsigned char>(*p))) ++p;
  }
  if (strncmp(p, "hh", 2) == 0 || strncmp(p, "ll", 2) == 0)
    p += 2;
  else if (*p != '\0' && strchr("hljztL", *p))
    ++p;
  return *p != '\0' && strchr("diouxXfFeEgGaAcspn", *p) ? p + 1 : nullptr;
}

}  // namespace

int read_and_init_parameters(int argc, char** argv) {
  init_param();
  const int result = parse_command_line(argc, argv);
  return result != 0 ? result : check_parameters();
}

void print_file_name(FILE* out, const std::string& name) {
  const char* p = name.c_str();
  while (*p != '\0') {
    if (p[0] == '%' && p[1] == '%') {
      fputc('%', out);
      p += 2;
    } else if (const char* end = p[0] == '%' ? end_of_conversion(p + 1) : nullptr) {
      p = end;
    } else {
      fputc(*p, out);
      ++p;
    }
  }
}

void print_search_parameters(FILE* out, const char* prefix) {
  const char S = global_print_sat_mode == 2 || global_print_sat_mode == 3 ? '\t' : ' ';
  const auto label = [&](const char* text) { fprintf(out, "%s%s%c", prefix, text, S); };
  const auto yes_or_no = [](bool value) { return value ? "yes" : "no"; };

  label("Parameter settings used in this search:");
  fprintf(out, "\n");
  label("Input file name:                        ");
  print_file_name(out, global_input_filename);
  fprintf(out, "\n");
  if (!global_output_filename.empty()) {
    label("Output file name:                       ");
    print_file_name(out, global_output_filename);
    fprintf(out, "\n");
  }
  label("   Sequence range to process:           ");
  fprintf(out, "%u - ", static_cast<unsigned>(global_sequence_from));
  if (global_sequence_to == -1)
    fprintf(out, "last sequence\n");
  else
    fprintf(out, "%u\n", static_cast<unsigned>(global_sequence_to));
  label("   Satellites searched for:             ");
  if (global_search_mode == 0)
    fprintf(out, "exact repeats\n");
  else if (global_search_mode == 1)
    fprintf(out, "exact repeats which are extended to imperfect repeats\n");
  else
    fprintf(out, "imperfect repeats\n");
  if (global_search_mode != 0) {
    label("   Recursion depth:                     ");
    fprintf(out, "%d\n", global_maximum_recursion_depth);
    label("   Maximum score reduction:             ");
    if (global_maximum_scorereduction == 2147483647)
      fprintf(out, "-\n");
    else
      fprintf(out, "%d\n", global_maximum_scorereduction);
  }
  label("   Minimum unit length:                 ");
  fprintf(out, "%u\n", global_min_unit_length);
  label("   Maximum unit length:                 ");
  fprintf(out, "%u\n", global_max_unit_length);
  label("   Minimum score:                       ");
  fprintf(out, "maximum (%d, %d+%g*unitlength )\n", global_min_score, global_min_score_a,
          static_cast<double>(global_min_score_bx));
  label("   Minimum length:                      ");
  fprintf(out, "maximum (%d, %d+%g*unitlength )\n", global_min_length, global_min_length_a,
          static_cast<double>(global_min_length_bx));
  label("   Min. to max. perfection range:       ");
  fprintf(out, "%g %% - %g %%\n", static_cast<double>(global_min_perfection),
          static_cast<double>(global_max_perfection));
  label("   Treat N's as:                        ");
  fprintf(out, "%s\n", global_treat_Ns_as_missense ? "missense" : "neutral");
  label("   Max. succesive N's allowed:          ");
  fprintf(out, "%d\n", global_Ns_allowed_in_a_row);
  if (global_search_mode != 0) {
    label("   Mismatch score:                      ");
    fprintf(out, "%d\n", global_mismatch_score);
    label("   Indel score:                         ");
    fprintf(out, "%d\n", global_indel_score);
  }
  label("   Show shorter (not longer) of two repeat variants with equal score: ");
  fprintf(out, "%s\n", yes_or_no(global_prefer_longer_repeat == 0));
  label("   Number of flanking nucletides:       ");
  fprintf(out, "%d\n", global_flanking);
  label("   Remove mostly overlapping satellites:");
  fprintf(out, "%s\n", yes_or_no(global_remove_mostly_hidden));
  label("   Write file with masked seq.:         ");
  fprintf(out, "%s\n", yes_or_no(global_mask_repeats));
  label("   Computing perfections treat N's:     ");
  if (global_N_and_perfection_mode == 0)
    fprintf(out, "asMismatch\n");
  else if (global_N_and_perfection_mode == 1)
    fprintf(out, "asNeutral\n");
  else
    fprintf(out, "asMatch\n");
  label("   Report units as:                     ");
  if (global_report_unit_mode == 0)
    fprintf(out, "as they are\n");
  else if (global_report_unit_mode == 1)
    fprintf(out, "alphabetical normal form\n");
  else
    fprintf(out, "alphabetical normal form using reverse complement\n");
  label("   Output format:                       ");
  switch (global_print_sat_mode) {
    case 0:
      fprintf(out, "quarvo format\n");
      break;
    case 1:
      fprintf(out, "extended quarvo format\n");
      break;
    case 2:
      fprintf(out, "gff\n");
      break;
    case 3:
      fprintf(out, "one-per-line format\n");
      break;
    case 4:
      fprintf(out, "fasta format\n");
      break;
    case 5:
      fprintf(out, "old format\n");
      break;
  }
  label("   Print sequence mode:                 ");
  if (global_print_sat_seq_mode == 0)
    fprintf(out, "don't print sequence\n");
  else if (global_print_sat_seq_mode == 1)
    fprintf(out, "print sequence\n");
  else
    fprintf(out, "print alignment\n");
  if (global_print_sat_mode == 2 || global_print_sat_mode == 3) {
    label("   Print seq. info as comment:          ");
    fprintf(out, "%s\n", yes_or_no(global_sequenceInfoAsComment));
  }
}
