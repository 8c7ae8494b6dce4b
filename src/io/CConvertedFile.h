#ifndef QUARVO_CCONVERTEDFILE_H
#define QUARVO_CCONVERTEDFILE_H

#include <cstdio>
#include <string>

#include "COutputFile.h"

// The file that a conversion writes. A regular file gets its name only when it is complete: until then it is written
// under the name with ".unfinished" appended, and a former file of the name stays as it is. Standard output, devices
// and pipes are written directly. Not copyable; the destructor removes what is unfinished.
class CConvertedFile {
 public:
  CConvertedFile() = default;
  CConvertedFile(const CConvertedFile&) = delete;
  CConvertedFile& operator=(const CConvertedFile&) = delete;
  ~CConvertedFile();

  // Opens the file; an empty name stands for standard output. Returns false behind a message when that is impossible
  // or when it is one of the files to read.
  bool open(const std::string& file_name, const std::string& results_name, const std::string& lengths_name);

  std::FILE* stream() const { return file.stream(); }
  // False once something could not be written.
  bool is_intact() const { return file.is_intact(); }

  // Closes the file and gives it its name. Returns false when something could not be written.
  bool finish();
  void report_write_failure() const { file.report_write_failure(); }

  // What a user must know about the output of a conversion that fails now: a line, or nothing before open().
  const char* fate() const;

 private:
  COutputFile file{"as output file."};
  std::string name;             // where the file belongs, links resolved
  std::string unfinished_name;  // empty when the file is written directly

  bool refuse_input(const std::string& file_name) const;
};

#endif
