// The reader on arbitrary bytes, against the plain reader: the file in one block and in blocks of a few bytes, with
// every kind of vector code, as it is and compressed.
//
// Input: a byte that gives the size of the small blocks and the way to compress, then the file. A file that is
// compressed by itself, perhaps corrupt, is compared with one that is decompressed in one go.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "CFile.h"
#include "CSequence_Mol.h"
#include "memory-file.h"
#include "plain-gzip.h"
#include "plain-reader.h"
#include "printable-text.h"
#include "vector-targets.h"

namespace {

std::string text_of(const faststring& string) { return {string.buffer, string.buffer + string.length}; }

// Everything that a read left, as a text to compare.
std::string describe(const std::string& full_name, const std::string& short_name, const std::string& description,
                     const std::string& symbols, unsigned line) {
  return "record \"" + full_name + "\" = \"" + short_name + "\" + \"" + description + "\", " +
         std::to_string(symbols.size()) + " symbols " + symbols + ", up to line " + std::to_string(line) + "\n";
}

std::string describe_error(unsigned line) { return "format error on line " + std::to_string(line) + "\n"; }

std::string expected(const std::string& bytes) {
  std::string text;
  const plain_file file = read_plainly(bytes);
  for (const plain_record& record : file.records) {
    text += describe(record.full_name, record.short_name, record.description, record.symbols, record.line);
  }
  return file.has_format_error ? text + describe_error(file.error_line) : text + "end of file\n";
}

// A few bytes may be a million compressed, and all are read in small blocks too.
constexpr std::size_t longest_text = 50000;

constexpr const char* fault_text = "fault\n";

std::string status_text(CFile& file) {
  if (!file.has_failed()) return file.status == CFile::good_state ? "" : "odd status\n";
  if (file.at_end_of_file()) return "end of file\n";
  file.look_for_faults();
  return file.fault != nullptr ? fault_text : describe_error(file.line);
}

// What the reader makes of the file, record by record as in a run.
std::string read(const CMemoryFile& bytes, unsigned block_size, unsigned reserved) {
  static CFile& file = *new CFile;  // one for all: its memory is what takes the time
  file.close();
  file.open(bytes.name().c_str());
  if (file.has_failed()) std::abort();
  file.block_size = block_size;
  CSequence_Mol record(1, 'N');
  if (reserved != 0) record.symbols.reserve(reserved);
  std::string text;
  do {
    record.readFastaSequence(file);
    if (!file.has_failed() || file.at_end_of_file()) {
      text += describe(text_of(record.full_name), text_of(record.short_name), text_of(record.description),
                       text_of(record.symbols), file.line);
    }
    text += status_text(file);
  } while (!file.has_failed());
  return text;
}

void compare(const std::string& found, const std::string& wanted, const std::string& where) {
  if (found == wanted) return;
  std::fprintf(stderr, "The reader differs (%s).\nreader:\n%s\nplain reader:\n%s\n", where.c_str(),
               differential::printable(found).c_str(), differential::printable(wanted).c_str());
  std::abort();
}

// Of a file with a fault the reader may give the records that come before it, and must tell the fault.
void compare_troubled(const std::string& found, const std::string& wanted, const std::string& where) {
  const std::string_view fault = fault_text;
  const bool is_told = found.ends_with(fault);
  const std::string records = found.substr(0, found.size() - (is_told ? fault.size() : 0));
  if (!is_told || !wanted.starts_with(records)) compare(found, wanted + "with a fault", where);
}

// Compares every way to read these bytes with what they should give.
template <typename Compare>
void check(const std::string& bytes, unsigned small_block, const std::string& wanted, Compare compare_with) {
  const CMemoryFile file(bytes);
  on_each_vector_target([&](const char* target) {
    compare_with(read(file, CFile::buffer_size, 10000), wanted, std::string("in one block, ") + target);
    compare_with(read(file, small_block, 0), wanted, "in blocks of " + std::to_string(small_block) + ", " + target);
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const unsigned small_block = 2 + data[0] % 70U;
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (is_gzip(bytes)) {
    const plain_gzip file = read_gzip_plainly(bytes);
    if (file.text.size() > longest_text) return 0;
    check(bytes, small_block, expected(file.text), file.is_intact ? compare : compare_troubled);
  } else {
    const std::string wanted = expected(bytes);
    check(bytes, small_block, wanted, compare);
    check(compressed(bytes, data[0]), small_block, wanted, compare);
  }
  return 0;
}
