#include "quarvo-masked.h"

#include <algorithm>
#include <filesystem>

#include "out-of-memory.h"

namespace fs = std::filesystem;

namespace {

// Without the links in it; empty where that cannot be told.
fs::path directory_of(const fs::path& name) {
  std::error_code error;
  const fs::path directory = fs::canonical(name.has_parent_path() ? name.parent_path() : ".", error);
  if (error == std::errc::not_enough_memory) raise_out_of_memory();
  return error ? fs::path() : directory;
}

}  // namespace

void write_masked_record(std::FILE* out, CSequence_Mol& record, const std::list<Csat*>& repeats) {
  constexpr unsigned symbols_a_line = 80;
  char* const symbols = record.symbols.buffer;
  for (const Csat* sat : repeats) std::fill_n(symbols + (sat->pos_left - symbols), sat->span(), 'X');

  std::fprintf(out, ">%s\n", record.full_name.c_str());
  for (unsigned i = 0; i < record.symbols.length; i += symbols_a_line) {
    std::fwrite(symbols + i, 1, std::min(symbols_a_line, record.symbols.length - i), out);
    std::fputc('\n', out);
  }
  std::fflush(out);
}

bool can_have_masked_file(const std::string& input_name) {
  std::error_code error;
  const fs::file_type type = fs::status(input_name, error).type();
  if (type == fs::file_type::fifo || type == fs::file_type::socket) return false;
  if (type == fs::file_type::character || type == fs::file_type::block) return false;
  const std::string directory = directory_of(input_name);
  return directory != "/dev" && directory != "/proc" && !directory.starts_with("/proc/");
}
