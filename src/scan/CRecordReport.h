#pragma once

#include <cstdint>
#include <cstdio>

#include "CScanInput.h"
#include "CSearchers.h"
#include "repeat-run.h"
#include "scan-options.h"

// The block of one record in the results, by all threads.
//
// Overlap removal and text of a repeat depend on those that overlap it alone. So the repeats are cut into groups
// wherever none reaches over, groups are thinned and printed at once, and their texts written one after the other.
class CRecordReport {
 public:
  CRecordReport(const search_settings& its_settings, CSearchers& its_searchers, masking its_mask)
      : settings(its_settings), searchers(its_searchers), mask(its_mask) {}

  // Writes the block, masks the record's letters and deletes the repeats. Returns how many were reported.
  std::int64_t write(std::FILE* out, scan_record& record, const repeat_list& repeats);

 private:
  const search_settings& settings;
  CSearchers& searchers;
  masking mask;

  struct group;
  void print(scan_record& record, group& printed) const;
};

// Writes the letters of a record as FASTA in lines of 80.
void write_letters(std::FILE* out, scan_record& record);
