#pragma once

#include <tclap/CmdLine.h>

#include <string>
#include <vector>

// The plain words of a command line. The library's own argument would also take a misspelt option as a file name;
// a word that begins with '-' is a file name only after "--", or where '-' alone may be one.
class CFileNamesArg : public TCLAP::UnlabeledMultiArg<std::string> {
 public:
  using TCLAP::UnlabeledMultiArg<std::string>::UnlabeledMultiArg;

  bool may_be_dash = false;

  bool processArg(int* i, std::vector<std::string>& args) override {
    const std::string& word = args[static_cast<std::size_t>(*i)];
    if (!TCLAP::Arg::ignoreRest() && !word.empty() && word[0] == '-' && !(may_be_dash && word.size() == 1)) {
      throw TCLAP::CmdLineParseException("Couldn't find match for argument", word);
    }
    return TCLAP::UnlabeledMultiArg<std::string>::processArg(i, args);
  }
};
