#pragma once

#include <string>

#include "Csat.h"
#include "stream-text.h"
#include "test-record.h"

// A repeat made by hand on a sequence of its own, and its report.
class CReportedRepeat {
 public:
  CTestRecord record;
  Csat sat;

  // The repeat [left, right) without edits, whose unit is its first L symbols.
  CReportedRepeat(const std::string& symbols, int left, int right, int L) : record(symbols) {
    sat.reset(record.at(left), record.at(left + L));
    sat.pos_right = record.at(right);
    sat.score = right - left - L;
  }

  void add(int position, char letter) {
    sat.add_missense(record.at(position), letter);
    if (letter == 'M') ++sat.mismatches;
    if (letter == 'I') ++sat.insertions;
    if (letter == 'D') ++sat.deletions;
  }

  std::string report() {
    return text_of([this](std::FILE* out) { sat.report_sat(out, record); });
  }
};

// ACACACGACACACAC with the G as an insertion: score 7, 14 symbols long, 13 of which match.
class CExampleRepeat : public CReportedRepeat {
 public:
  explicit CExampleRepeat(const std::string& before = "", const std::string& after = "")
      : CReportedRepeat(before + "ACACACGACACACAC" + after, static_cast<int>(before.size()),
                        static_cast<int>(before.size()) + 15, 2) {
    add(static_cast<int>(before.size()) + 6, 'I');
    sat.score = 7;
  }
};
