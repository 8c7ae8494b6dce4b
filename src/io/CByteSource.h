#pragma once

#include <fstream>
#include <memory>
#include <vector>

#include "CGzipDecoder.h"

// The text of a file that is plain or compressed by gzip or bgzip. The first two bytes tell which, whatever the name.
//
// A plain file is read straight into the caller's memory. A compressed one needs a block of the size of the first read
// and the decoder, whatever its length. Pipes and devices are read like files. A directory reads as an empty file.
//
// A file that cannot be read to its end (a broken disk, a file that became shorter while it was read, compressed data
// that are cut off or corrupt) has a `fault`, and must not be taken for complete. Only std::bad_alloc is thrown.
class CByteSource : public std::ifstream {
 public:
  // Why the file could not be read to its end, a text that lasts until the next system error or open, or null.
  const char* fault = nullptr;

  // Opens the file for reading; is_open() and fail() say whether that worked. A file opened before must be closed.
  void open(const char* name);

  // Reads the next bytes of the text, as many as asked for unless the text ends or cannot be read. Returns their
  // number: 0, and then again 0, only at the end of what can be read, where the caller must look at `fault`. The first
  // call must ask for 2 at the least, which tell whether the file is compressed.
  std::streamsize read(char* to, std::streamsize size);

  // Known from the first read on.
  bool is_compressed() const { return decoder != nullptr; }

  // Known from the first read on: what the text is, where its first bytes tell that it is neither FASTA nor results,
  // and what to do with it; or null. The first read must ask for foreign_format_bytes.
  const char* foreign_kind() const { return its_foreign_kind; }

 private:
  std::streamoff bytes_read = 0;
  std::streamoff bytes_expected = 0;  // the size of the file when it was opened; 0 where there is none, as of a pipe
  bool is_at_start = true;
  const char* its_foreign_kind = nullptr;
  std::unique_ptr<CGzipDecoder> decoder;  // of a compressed file
  std::vector<char> compressed;           // what the decoder works on

  std::streamoff seek(std::ios_base::seekdir from) { return rdbuf()->pubseekoff(0, from, std::ios_base::in); }
  std::streamoff size_when_opened();
  std::streamsize read_raw(char* to, std::streamsize size);
  std::streamsize count_read(std::streamsize size);
  std::streamsize read_first(char* to, std::streamsize size);
  void start_decoder(const char* first_bytes, std::streamsize count, std::streamsize size);
  std::streamsize decode(char* to, std::streamsize size);
};
