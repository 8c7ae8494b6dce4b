#include "CConvertedFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "bgzf-stream.h"
#include "shown-text.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* is_input = "It is one of the files to read.";

bool is_written_directly(const std::string& name) {
  std::error_code ignored;
  const fs::file_status status = fs::status(name, ignored);
  return fs::exists(status) && !fs::is_regular_file(status);
}

// The place that a chain of symbolic links leads to, whether or not there is a file. Empty when it leads nowhere.
std::string with_links_resolved(const std::string& name) {
  constexpr int most_links = 40;
  std::error_code ignored;
  fs::path place = name;
  for (int links = 0; fs::is_symlink(place, ignored); ++links) {
    if (links == most_links) return "";
    place = place.parent_path() / fs::read_symlink(place, ignored);
  }
  return place.string();
}

std::string directory_of(const std::string& name) {
  const fs::path directory = fs::path(name).parent_path();
  return directory.empty() ? "." : directory.string();
}

bool is_protected(const std::string& name) {
  return access(name.c_str(), F_OK) == 0 && access(name.c_str(), W_OK) != 0;
}

// Whether the file, a name or open, is one of those.
template <typename File>
bool is_one_of(const File& file, const std::vector<std::string>& names) {
  return std::any_of(names.begin(), names.end(),
                     [&](const std::string& name) { return is_same_regular_file(file, name); });
}

std::string reason_of(int error) { return std::string(std::strerror(error)) + "."; }

}  // namespace

bool CConvertedFile::open(const std::string& file_name, const std::vector<std::string>& read_files, int its_threads) {
  threads = its_threads;
  shown_name = file_name.empty() ? "standard output" : shown(file_name);
  if (file_name.empty()) {
    file.claim_standard_output();
    return !is_one_of(STDOUT_FILENO, read_files) || refuse(is_input);
  }
  if (is_one_of(file_name, read_files)) return refuse(is_input);
  if (is_written_directly(file_name)) {
    return (open_directly(file_name) && compress_for(file_name)) || refuse(reason_of(errno));
  }
  name = with_links_resolved(file_name);
  if (name.empty()) return refuse(reason_of(ELOOP));
  if (is_protected(name)) return refuse(reason_of(EACCES));
  return (open_unnamed() && compress_for(file_name)) ||
         refuse("In its directory no file can be made: " + reason_of(errno));
}

bool CConvertedFile::open_directly(const std::string& file_name) { return file.claim(file_name) && file.start(); }

bool CConvertedFile::open_unnamed() {
  if (!unnamed.create(directory_of(name))) return false;
  unnamed.take_mode_of(name);
  return file.claim(fcntl(unnamed.descriptor(), F_DUPFD_CLOEXEC, 0)) && file.start();
}

bool CConvertedFile::compress_for(const std::string& file_name) {
  if (!file_name.ends_with(".gz")) return true;
  compressed = open_bgzf_stream(fileno(file.stream()), threads);
  return compressed != nullptr;
}

bool CConvertedFile::close_compressed() {
  return compressed == nullptr || std::fclose(std::exchange(compressed, nullptr)) == 0;
}

bool CConvertedFile::refuse(const std::string& reason) const {
  std::fprintf(stderr, "Sorry! Failed to open file\n   \"%s\"\nas output file.\n%s\n", shown_name.c_str(),
               reason.c_str());
  return false;
}

const char* CConvertedFile::fate() const {
  if (file.stream() == nullptr) return "";
  return unnamed.descriptor() < 0 ? "What has been written is not complete.\n" : "No file has been written.\n";
}

bool CConvertedFile::finish() {
  const bool is_compressed_whole = close_compressed();
  if (!file.close() || !is_compressed_whole) return false;
  if (unnamed.descriptor() < 0 || unnamed.give_name(name, may_replace)) return true;
  why_unnamed = "It could not get its name: " + reason_of(errno) + "\n";
  return false;
}

void CConvertedFile::report_write_failure() const {
  file.end_on_closed_pipe();
  std::fprintf(stderr, "Sorry! Failed to write file\n   \"%s\"\nas output file.\n%s", shown_name.c_str(),
               why_unnamed.c_str());
}

bool is_standard_error(const std::vector<std::string>& read_files) { return is_one_of(STDERR_FILENO, read_files); }
