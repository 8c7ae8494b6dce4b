#include "report-command-line.h"

#include <tclap/CmdLine.h>

#include "global-types-and-parameters.h"

namespace {

// The library's own argument would also take a misspelt option as a file name; a word that begins with '-' is one only
// behind "--".
class CResultsNameArg : public TCLAP::UnlabeledValueArg<std::string> {
 public:
  using TCLAP::UnlabeledValueArg<std::string>::UnlabeledValueArg;

  bool processArg(int* i, std::vector<std::string>& args) override {
    const std::string& word = args[static_cast<std::size_t>(*i)];
    if (!TCLAP::Arg::ignoreRest() && word.size() > 1 && word[0] == '-') {
      throw TCLAP::CmdLineParseException("Couldn't find match for argument", word);
    }
    return TCLAP::UnlabeledValueArg<std::string>::processArg(i, args);
  }
};

}  // namespace

report_request parse_report_command_line(int argc, char** argv) {
  TCLAP::CmdLine command_line(
      "Makes a web page of a results file of quarvo: one file that any browser opens, without a network.", ' ',
      quarvo_version);
  TCLAP::ValueArg<std::string> page_name(
      "o", "output", "File for the page. Without it the page is written to the console.", false, "", "FILE");
  CResultsNameArg results_name("RESULTS",
                               "Results file of quarvo in output format 0, 1 or 3, plain or compressed by gzip.", true,
                               "", "RESULTS");
  command_line.add(page_name);
  command_line.add(results_name);
  command_line.parse(argc, argv);
  return {results_name.getValue(), page_name.getValue()};
}
