#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CBlockFeed.h"
#include "CFile.h"
#include "CSequence_Mol.h"

// A record of the input. A search holds on to it while the next ones are read.
struct scan_record {
  CSequence_Mol molecule{1, 'N'};
  unsigned number = 0;     // ordinal in all files, from 1
  std::int64_t bytes = 0;  // of the input that it takes, about
  faststring letters;      // as they stand in the input, one for each symbol; only where wanted
};

// The records of one or more FASTA files, one file after the other.
class CScanInput {
 public:
  // `threads` decompress. With `keeps_letters` records have their letters, which are read more slowly.
  CScanInput(std::vector<std::string> names, int threads, bool keeps_letters);

  // Opens the first file, and sees whether the others are there. Returns false when that is impossible.
  bool open();

  // Reads the next record; null at the end of all files, and when one cannot be read.
  std::unique_ptr<scan_record> next();

  // Why there is no next record, lines for the user; empty at the end. And what the program then ends with.
  const std::string& error() const { return problem; }
  int status() const { return its_status; }

  // The sizes of all files that have one; 0 where one has none.
  std::int64_t size() const { return total; }

 private:
  std::vector<std::string> names;
  int threads;
  bool keeps_letters;
  std::size_t opened = 0;  // files
  std::unique_ptr<CBlockFeed> feed;
  std::unique_ptr<CFile> file;
  unsigned number = 0;
  std::int64_t position = 0;  // in the file
  std::int64_t total = 0;
  std::string last_short_name;
  std::string problem;
  int its_status = 0;

  const std::string& name() const { return names[opened - 1]; }
  bool open_next();
  std::int64_t position_now();
  std::unique_ptr<scan_record> fail(int status, const std::string& why);
  std::unique_ptr<scan_record> fail_to_read(const CSequence_Mol& record);
  const char* fault_of_file();
};
