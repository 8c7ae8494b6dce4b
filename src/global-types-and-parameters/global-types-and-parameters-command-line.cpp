// The command line: from the argument vector to checked parameters.

#include <tclap/CmdLine.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "CCommandLineOutput.h"
#include "CFileNamesArg.h"
#include "global-types-and-parameters-options.h"
#include "global-types-and-parameters.h"
#include "number2cstring.h"

namespace {

constexpr int rejected = -1;
constexpr int unknown_mode = -2;

class CNoOutput : public TCLAP::CmdLineOutput {
 public:
  void usage(TCLAP::CmdLineInterface& /*command_line*/) override {}
  void version(TCLAP::CmdLineInterface& /*command_line*/) override {}
  void failure(TCLAP::CmdLineInterface& /*command_line*/, TCLAP::ArgException& /*why*/) override {}
};

// The library's arguments for the option table, and the copying of their values to the table's destinations.
class COptionParser {
 public:
  COptionParser() : mode_words(search_mode_words().begin(), search_mode_words().end()), mode_constraint(mode_words) {}

  // Hands every option to the library, in table order. Raises TCLAP::ArgException for a clash in the table.
  void declare_options() {
    for (const option_row& option : option_table()) {
      std::visit([&](auto* destination) { declare(option, destination); }, option.destination);
    }
  }

  // Errors, help and version end the process inside the library.
  void parse(int argc, char** argv) {
    command_line.setOutput(&output);
    command_line.parse(argc, argv);
    for (const auto& store : stores) store();
  }

  // Errors, help and version raise the library's exceptions.
  void parse_silently(int argc, char** argv) {
    command_line.setExceptionHandling(false);
    command_line.setOutput(&no_output);
    command_line.parse(argc, argv);
    for (const auto& store : stores) store();
  }

 private:
  CCommandLineOutput output;
  CNoOutput no_output;
  TCLAP::CmdLine command_line{"This program searches for tandemly repeated patterns in DNA sequences.", ' ',
                              quarvo_version};
  std::vector<std::string> mode_words;
  TCLAP::ValuesConstraint<std::string> mode_constraint;
  std::vector<std::unique_ptr<TCLAP::Arg>> arguments;
  std::vector<std::function<void()>> stores;

  template <typename Argument, typename Value>
  void add(std::unique_ptr<Argument> argument, Value* destination) {
    command_line.add(*argument);
    stores.emplace_back([parsed = argument.get(), destination] { *destination = parsed->getValue(); });
    arguments.push_back(std::move(argument));
  }

  void declare(const option_row& option, bool* destination) {
    add(std::make_unique<TCLAP::SwitchArg>(option.short_name, option.long_name, option.help, *destination),
        destination);
  }

  template <typename Number>
  void declare(const option_row& option, Number* destination) {
    add(std::make_unique<TCLAP::ValueArg<Number>>(option.short_name, option.long_name, option.help, false, *destination,
                                                  value_label(option)),
        destination);
  }

  void declare(const option_row& option, std::string* destination) {
    add(std::make_unique<TCLAP::ValueArg<std::string>>(option.short_name, option.long_name, option.help, false,
                                                       *destination, &mode_constraint),
        destination);
  }

  void declare(const option_row& option, std::vector<std::string>* destination) {
    add(std::make_unique<CFileNamesArg>(option.long_name, option.help, false, value_label(option)), destination);
  }
};

template <typename... Texts>
int reject(int status, Texts... texts) {
  (std::fputs(texts, stderr), ...);
  return status;
}

bool has_no_input_file() { return parsed_options.iofiles.empty(); }

// Three or more words name no file at all; the run then ends at the empty input name.
void store_file_names() {
  global_input_filename.clear();
  global_output_filename.clear();
  const std::vector<std::string>& names = parsed_options.iofiles;
  if (names.size() > 2) return;
  global_input_filename = names[0];
  if (names.size() == 2) global_output_filename = names[1];
}

int search_mode_of(const std::string& word) {
  const auto words = search_mode_words();
  if (word == words[search_mode_exact]) return search_mode_exact;
  if (word == words[search_mode_extend_exact]) return search_mode_extend_exact;
  return search_mode_imperfect;
}

// Stores the value in the parameter if it is in 0 .. largest; else complains with the text around the number.
int store_mode(int value, int largest, int& parameter, const char* before, const char* behind) {
  if (value < 0 || value > largest) {
    return reject(unknown_mode, "Sorry, a problem occured when parsing the command line options. ", before,
                  number2str(value), behind, " is unknown.\n\n");
  }
  parameter = value;
  return 0;
}

int store_modes() {
  const parsed_option_values& parsed = parsed_options;
  int status =
      store_mode(parsed.output_format, fasta_format, global_print_sat_mode, "An outputFormat with a value of ", "");
  if (status == 0) {
    status = store_mode(parsed.print_repeat_seq_mode, print_alignment, global_print_sat_seq_mode,
                        "A printRepeatSeqMode with a value of ", "");
  }
  if (status == 0) {
    status = store_mode(parsed.N_perfection_mode, Ns_as_match, global_N_and_perfection_mode, "An option value of ",
                        " for the reportUnit option");
  }
  if (status == 0) {
    status = store_mode(parsed.report_unit, unit_normal_form_with_complement, global_report_unit_mode,
                        "An option value of ", " for the reportUnit option");
  }
  return status;
}

// The threshold of a repeat of unit length 1, in single precision.
float threshold_of_unit_length_1(int constant, int offset, float slope) {
  const float linear = static_cast<float>(offset) + slope;
  return static_cast<float>(constant) >= linear ? static_cast<float>(constant) : linear;
}

int check_parameters() {
  const float s = threshold_of_unit_length_1(global_min_score, global_min_score_a, global_min_score_bx);
  const float l = threshold_of_unit_length_1(global_min_length, global_min_length_a, global_min_length_bx);
  if (s < 2.0F && l < 2.0F) {
    return reject(rejected, "Sorry, either the minimum score or the minimum length must be larger.\n");
  }
  if (global_mismatch_score > -2) {
    return reject(rejected, "Sorry, the mismatch score must be smaller or equal to -2.\n");
  }
  if (global_indel_score > -2) {
    return reject(rejected, "Sorry, the indel score must be smaller or equal to -2.\n");
  }
  if (global_Ns_allowed_in_a_row < 0) global_Ns_allowed_in_a_row = 0;
  if (global_flanking < 0) global_flanking = 0;
  if (global_maximum_recursion_depth <= 0) {
    return reject(rejected,
                  "Sorry, the recursion depth must be greater than 0.\n"
                  "A value of 0 would corresponds to a perfect search.\n");
  }
  if (global_max_unit_length < global_min_unit_length) {
    return reject(rejected,
                  "I think you have made a mistake here: The maximum unit length must be greater\n"
                  "or equal to the minimum unit length.\n");
  }
  if (global_max_unit_length > largest_unit_length) {
    return reject(rejected, "Sorry, the maximum unit length must be smaller or equal to 10000.\n");
  }
  return 0;
}

// Reads the argument vector into the parameters and parsed_options. Returns a status.
int parse_command_line(int argc, char** argv) {
  try {
    COptionParser parser;
    parser.declare_options();
    parser.parse(argc, argv);
  } catch (const TCLAP::ArgException& e) {
    return reject(rejected, "Error: ", e.error().c_str(), " for arg ", e.argId().c_str(), "\n");
  }
  return 0;
}

}  // namespace

int read_and_init_parameters(int argc, char** argv) {
  init_param();
  init_parsed_options();
  if (const int status = parse_command_line(argc, argv); status != 0) return status;
  if (has_no_input_file()) {
    return reject(rejected, "Error: No input file has been specified. Type ", argv[0],
                  " --help for more information.\n");
  }
  store_file_names();
  global_prefer_longer_repeat = parsed_options.prefer_shorter_repeats ? 0 : 1;
  global_search_mode = search_mode_of(parsed_options.search_mode);
  if (const int status = store_modes(); status != 0) return status;
  return check_parameters();
}

std::vector<std::string> files_named(int argc, char** argv) {
  init_param();
  init_parsed_options();
  try {
    COptionParser parser;
    parser.declare_options();
    parser.parse_silently(argc, argv);
  } catch (const TCLAP::ArgException&) {
    return {};
  } catch (const TCLAP::ExitException&) {
    return {};
  }
  return parsed_options.iofiles;
}
