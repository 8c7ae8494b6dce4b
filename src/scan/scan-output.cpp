#include "scan-output.h"

#include <htslib/tbx.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "CTemporaryFile.h"
#include "shown-text.h"

namespace {

constexpr unsigned longest_for_tbi = 1U << 29;
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

}  // namespace

bool open_output(CConvertedFile& file, const std::string& name, const std::vector<std::string>& read_files,
                 bool may_replace, int threads) {
  if (!may_replace) file.replace_nothing();
  if (name.empty() || may_replace || !exists_as_file(name)) return file.open(name, read_files, threads);
  return refuse(name, "It exists. To replace it, give --force.");
}

bool finish_output(CConvertedFile& file) {
  if (file.finish()) return true;
  file.report_write_failure();
  std::fputs(file.fate(), stderr);
  return false;
}

bool has_index(const std::string& file_name) {
  return exists_as_file(file_name + ".tbi") || exists_as_file(file_name + ".csi");
}

bool write_index(const std::string& file_name, bool is_bed, unsigned longest_sequence) {
  const bool is_csi = longest_sequence > longest_for_tbi;
  const std::string name = file_name + (is_csi ? ".csi" : ".tbi");
  const std::filesystem::path directory = std::filesystem::path(name).parent_path();
  CTemporaryFile index;
  const auto write = [&] {
    if (!index.create(directory.empty() ? "." : directory.string())) return false;
    const std::string place = "/proc/self/fd/" + std::to_string(index.descriptor());
    return tbx_index_build3(file_name.c_str(), place.c_str(), is_csi ? smallest_bin_of_csi : 0, 1,
                            is_bed ? &tbx_conf_bed : &tbx_conf_gff) == 0 &&
           index.give_name(name);
  };
  if (write()) {
    std::error_code ignored;
    std::filesystem::remove(file_name + (is_csi ? ".tbi" : ".csi"), ignored);
    return true;
  }
  std::fprintf(stderr, "Sorry! Failed to write file\n   \"%s\"\nas index: %s.\nThe output itself is whole.\n",
               shown(name).c_str(), std::strerror(errno));
  return false;
}
