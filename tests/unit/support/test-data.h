#pragma once

#include <fstream>
#include <stdexcept>
#include <string>

// The symbols of the one record in a file of tests/data/.
inline std::string symbols_of_data_file(const std::string& name) {
  std::ifstream file(std::string(QUARVO_TEST_DATA) + '/' + name);
  std::string symbols;
  std::string line;
  while (std::getline(file, line)) {
    if (line.empty() || line[0] != '>') symbols += line;
  }
  if (symbols.empty()) throw std::runtime_error("no symbols in " + name);
  return symbols;
}
