#pragma once

#include <string>

#include "CSequence_Mol.h"

// A record as the reader would leave it, made from its symbols. The buffer has no room to spare, so that a sanitizer
// notices reading beyond the ends.
class CTestRecord : public CSequence_Mol {
 public:
  explicit CTestRecord(const std::string& its_symbols, const std::string& header = "seq1 made by hand")
      : CSequence_Mol(1, 'N') {
    symbols.assign(its_symbols.data(), its_symbols.data() + its_symbols.size());
    full_name.assign(header.c_str());
    short_name.assign(header.substr(0, header.find(' ')).c_str());
  }

  const char* begin() const { return symbols.buffer; }
  const char* end() const { return symbols.buffer + symbols.length; }
  const char* at(int position) const { return symbols.buffer + position; }
};

inline std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}
