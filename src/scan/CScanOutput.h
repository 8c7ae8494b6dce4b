#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "CConvertedFile.h"

// A file that a scan writes, compressed by blocks (BGZF) if its name ends in .gz; an empty name is standard output. It
// gets its name when it is whole. Not copyable.
class CScanOutput {
 public:
  CScanOutput() = default;
  CScanOutput(const CScanOutput&) = delete;
  CScanOutput& operator=(const CScanOutput&) = delete;
  ~CScanOutput();

  // Returns false behind a message when that is impossible, when it is one of the files to read, or when it exists and
  // need not be replaced. `threads` compress.
  bool open(const std::string& name, const std::vector<std::string>& inputs, bool may_replace, int threads);

  std::FILE* stream() const { return compressed != nullptr ? compressed : file.stream(); }
  bool is_intact() const { return std::ferror(stream()) == 0 && file.is_intact(); }

  // Closes the file and gives it its name. Returns false behind a message when something could not be written.
  bool finish();
  // The message, and what became of the file.
  void report_write_failure() const;
  const char* fate() const { return file.fate(); }

 private:
  CConvertedFile file;
  std::FILE* compressed = nullptr;  // a stream on top of the file's

  bool compress(int threads);
};

// Writes the tabix index of a finished file, as a .csi where a sequence is too long for a .tbi. Returns false behind a
// message when that is impossible. `is_bed`: else GFF3.
bool write_index(const std::string& file_name, bool is_bed, bool has_long_sequence);

// Whether the index would replace a file.
bool has_index(const std::string& file_name);
