#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "COutputFile.h"
#include "CTemporaryFile.h"

// The file that a companion program writes. A regular file gets its name only when it is complete, with the mode of the
// file that had it before, which stays as it is until then; of runs at once under one name the last to end has it, or
// the first where none may be replaced.
// Standard output, devices and pipes are written directly. What goes to a name that ends in .gz is compressed by BGZF.
// Not copyable; what is not complete vanishes.
class CConvertedFile {
 public:
  CConvertedFile() = default;
  CConvertedFile(const CConvertedFile&) = delete;
  CConvertedFile& operator=(const CConvertedFile&) = delete;
  ~CConvertedFile() { close_compressed(); }

  // Opens the file; an empty name stands for standard output. Returns false after a message when that is impossible
  // or when it is one of the files to read, of which some may have no name. Several threads may compress.
  bool open(const std::string& file_name, const std::vector<std::string>& read_files, int its_threads = 1);

  // Has finish() fail if by then another file has the name.
  void replace_nothing() { may_replace = false; }

  std::FILE* stream() const { return compressed != nullptr ? compressed : file.stream(); }

  // Closes the file and gives it its name. Returns false when something could not be written.
  bool finish();
  // A closed pipe on standard output ends the process here as it ends other filters.
  void report_write_failure() const;

  // What a user must know about the output of a conversion that fails now: a line, or nothing before open().
  const char* fate() const;

 private:
  COutputFile file{"as output file."};
  int threads = 1;
  bool may_replace = true;
  CTemporaryFile unnamed;           // what is written, unless that is done directly
  std::FILE* compressed = nullptr;  // the stream in front of the file, if any
  std::string shown_name;           // as the user gave it
  std::string name;                 // where the file belongs, links resolved
  std::string why_unnamed;          // it could not get its name

  bool open_directly(const std::string& file_name);
  bool open_unnamed();
  bool compress_for(const std::string& file_name);
  bool close_compressed();
  bool refuse(const std::string& reason) const;
};

// True when messages on standard error would be written into one of the files to read.
bool is_standard_error(const std::vector<std::string>& read_files);
