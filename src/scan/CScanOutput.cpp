#include "CScanOutput.h"

#include <htslib/bgzf.h>
#include <htslib/tbx.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "CTemporaryFile.h"
#include "shown-text.h"

namespace {

constexpr int smallest_bin_of_csi = 14;

bool exists_as_file(const std::string& name) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(name, ignored);
}

bool refuse(const std::string& name, const std::string& why) {
  std::fprintf(stderr, "Sorry! Failed to open file\n   \"%s\"\nas output file.\n%s\n", shown(name).c_str(),
               why.c_str());
  return false;
}

ssize_t write_blocks(void* blocks, const char* bytes, std::size_t count) {
  const ssize_t written = bgzf_write(static_cast<BGZF*>(blocks), bytes, count);
  return written < 0 ? 0 : written;
}

int close_blocks(void* blocks) { return bgzf_close(static_cast<BGZF*>(blocks)); }

}  // namespace

CScanOutput::~CScanOutput() {
  if (compressed != nullptr) std::fclose(compressed);
}

bool CScanOutput::open(const std::string& name, const std::vector<std::string>& inputs, bool may_replace, int threads) {
  if (!name.empty() && exists_as_file(name) && !may_replace) {
    return refuse(name, "It exists. To replace it, give --force.");
  }
  for (const std::string& input : inputs) {
    if (name.empty() ? is_same_regular_file(STDOUT_FILENO, input) : is_same_regular_file(name, input)) {
      return refuse(name.empty() ? "standard output" : name, "It is one of the files to read.");
    }
  }
  if (!file.open(name, "", "")) return false;
  return !name.ends_with(".gz") || compress(threads);
}

bool CScanOutput::compress(int threads) {
  const int below = dup(fileno(file.stream()));
  BGZF* const blocks = below < 0 ? nullptr : bgzf_dopen(below, "w");
  if (blocks == nullptr) return refuse("compressed output", std::strerror(errno));
  if (threads > 1) bgzf_mt(blocks, threads, 64);
  cookie_io_functions_t functions{};
  functions.write = write_blocks;
  functions.close = close_blocks;
  compressed = fopencookie(blocks, "w", functions);
  if (compressed != nullptr) std::setvbuf(compressed, nullptr, _IOFBF, std::size_t{1} << 16);
  return compressed != nullptr;
}

bool CScanOutput::finish() {
  bool is_whole = is_intact();
  if (compressed != nullptr) {
    is_whole = std::fclose(compressed) == 0 && is_whole;
    compressed = nullptr;
  }
  if (is_whole && file.finish()) return true;
  report_write_failure();
  return false;
}

void CScanOutput::report_write_failure() const {
  file.report_write_failure();
  std::fputs(file.fate(), stderr);
}

bool has_index(const std::string& file_name) {
  return exists_as_file(file_name + ".tbi") || exists_as_file(file_name + ".csi");
}

bool write_index(const std::string& file_name, bool is_bed, bool has_long_sequence) {
  const std::string name = file_name + (has_long_sequence ? ".csi" : ".tbi");
  const std::filesystem::path directory = std::filesystem::path(name).parent_path();
  CTemporaryFile index;
  const auto write = [&] {
    if (!index.create(directory.empty() ? "." : directory.string())) return false;
    const std::string place = "/proc/self/fd/" + std::to_string(index.descriptor());
    return tbx_index_build3(file_name.c_str(), place.c_str(), has_long_sequence ? smallest_bin_of_csi : 0, 1,
                            is_bed ? &tbx_conf_bed : &tbx_conf_gff) == 0 &&
           index.give_name(name);
  };
  if (write()) return true;
  std::fprintf(stderr, "Sorry! Failed to write file\n   \"%s\"\nas index: %s.\nThe output itself is whole.\n",
               shown(name).c_str(), std::strerror(errno));
  return false;
}
