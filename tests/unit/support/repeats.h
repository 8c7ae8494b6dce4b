#pragma once

#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "CSequence_Mol.h"
#include "Csat.h"

// Repeats as short texts: "[0,15) AC score 7 1I" is the repeat of the symbols 0 to 14 with unit AC and one insertion.

inline std::string describe(const Csat& sat, const CSequence_Mol& record) {
  std::ostringstream text;
  text << '[' << sat.pos_left - record.symbols.buffer << ',' << sat.pos_right - record.symbols.buffer << ") ";
  text << std::string(sat.unit_begin, sat.unit_end) << " score " << sat.score;
  const auto count = [&text](int n, char letter) {
    if (n != 0) text << ' ' << n << letter;
  };
  count(sat.mismatches, 'M');
  count(sat.insertions, 'I');
  count(sat.deletions, 'D');
  count(sat.number_of_Ns, 'N');
  return text.str();
}

inline std::vector<std::string> describe(const std::list<Csat*>& list, const CSequence_Mol& record) {
  std::vector<std::string> texts;
  for (const Csat* sat : list) texts.push_back(describe(*sat, record));
  return texts;
}

// The edits in list order, each as position and letter: "6I 17D".
inline std::string edits_of(const Csat& sat, const CSequence_Mol& record) {
  std::string text;
  for (const auto& entry : sat.missense_entries()) {
    if (!text.empty()) text += ' ';
    text += std::to_string(entry.position - record.symbols.buffer) + entry.symbol;
  }
  return text;
}

using texts = std::vector<std::string>;
