#include "CConvertedFile.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

bool is_written_directly(const std::string& name) {
  std::error_code ignored;
  const fs::file_status status = fs::status(name, ignored);
  return fs::exists(status) && !fs::is_regular_file(status);
}

// The place that a chain of symbolic links leads to, whether or not there is a file.
std::string with_links_resolved(const std::string& name) {
  constexpr int most_links = 40;
  std::error_code ignored;
  fs::path place = name;
  for (int links = 0; links != most_links && fs::is_symlink(place, ignored); ++links) {
    place = place.parent_path() / fs::read_symlink(place, ignored);
  }
  return place.string();
}

bool is_protected(const std::string& name) {
  return access(name.c_str(), F_OK) == 0 && access(name.c_str(), W_OK) != 0;
}

}  // namespace

CConvertedFile::~CConvertedFile() {
  if (!unfinished_name.empty()) unlink(unfinished_name.c_str());
}

bool CConvertedFile::open(const std::string& file_name, const std::string& results_name,
                          const std::string& lengths_name) {
  if (file_name.empty()) {
    file.claim_standard_output();
    const bool is_input = file.is_same_file_as(results_name) || file.is_same_file_as(lengths_name);
    return !is_input || refuse_input("standard output");
  }
  name = with_links_resolved(file_name);
  const bool is_direct = is_written_directly(file_name);
  const std::string written_name = is_direct ? file_name : name + ".unfinished";
  for (const std::string& input : {results_name, lengths_name}) {
    if (is_same_regular_file(file_name, input)) return refuse_input(file_name);
    if (is_same_regular_file(written_name, input)) return refuse_input(written_name);
  }
  if (is_protected(name) || !file.claim(written_name)) {
    file.report_open_failure(file_name);
    return false;
  }
  if (!is_direct) unfinished_name = written_name;
  if (file.start()) return true;
  file.report_open_failure(written_name);
  return false;
}

bool CConvertedFile::refuse_input(const std::string& file_name) const {
  file.report_open_failure(file_name);
  std::fputs("It is one of the files to read.\n", stderr);
  return false;
}

const char* CConvertedFile::fate() const {
  if (file.stream() == nullptr) return "";
  return unfinished_name.empty() ? "What has been written is not complete.\n" : "No file has been written.\n";
}

bool CConvertedFile::finish() {
  if (!file.close()) return false;
  if (unfinished_name.empty()) return true;
  std::error_code error;
  fs::rename(unfinished_name, name, error);
  if (!error) unfinished_name.clear();
  return !error;
}
