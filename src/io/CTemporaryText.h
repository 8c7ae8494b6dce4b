#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// Text that waits on the disk, in a file without a name in the directory for temporary files (the environment variable
// TMPDIR, or /tmp). Short texts need no file. Not copyable.
class CTemporaryText {
 public:
  CTemporaryText() = default;
  CTemporaryText(const CTemporaryText&) = delete;
  CTemporaryText& operator=(const CTemporaryText&) = delete;
  ~CTemporaryText();

  void append(std::string_view text);

  // Writes the whole text to `out`. Returns false when the file could not be made, written or read; fault() says why.
  // Errors of `out` are left in its error flag.
  bool copy_to(std::FILE* out);
  const std::string& fault() const { return problem; }

 private:
  std::string waiting;  // after what is in the file
  std::FILE* file = nullptr;
  std::string problem;

  bool make_file();
  void flush();
  bool fail(const char* what);
};
