#pragma once

#include <memory>

#include "CConversion.h"
#include "CFile.h"
#include "sequence-names.h"

// The FASTA file that was searched, its repeats in lower case or replaced by N or X, and all else as it was but for
// line ends, which become '\n'. One pass through file and results side by side; memory does not grow.
class CMaskConversion : public CConversion {
 public:
  CMaskConversion(const std::string& fasta_name, int mask) : file_name(fasta_name), kind(mask) {}

  bool begin(std::FILE* out, const results_header& header) override;
  bool begin_sequence(std::FILE* out, const results_sequence& sequence) override;
  bool add(std::FILE* out, const results_repeat& repeat) override;
  bool finish(std::FILE* out) override;

 private:
  std::string file_name;
  int kind;  // a mask_kind
  std::unique_ptr<CFile> file;
  bool may_skip_names = false;   // the results leave out sequences
  bool is_at_line_start = true;  // or in front of the first record
  bool is_in_record = false;
  std::int64_t position = 0;  // symbols of the record that have been copied
  std::optional<int> length;  // of the record, as the results tell it
  CNameRegister names;

  bool copy_up_to(std::FILE* out, std::int64_t end, bool masks);
  bool copy_header_line(std::FILE* out, std::string& name);
  bool end_record(std::FILE* out);
  bool refuse_file(const std::string& why, int status);
};
