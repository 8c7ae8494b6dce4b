#include "COutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "print-message.h"

namespace {

bool is_same(const struct stat& a, const struct stat& b) {
  return S_ISREG(a.st_mode) && S_ISREG(b.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool is_regular(int descriptor) {
  struct stat info {};
  return fstat(descriptor, &info) == 0 && S_ISREG(info.st_mode);
}

bool is_pipe(int descriptor) {
  struct stat info {};
  return fstat(descriptor, &info) == 0 && (S_ISFIFO(info.st_mode) || S_ISSOCK(info.st_mode));
}

// What a person watches keeps the stream's own buffering.
void use_buffer(std::FILE* stream, COutputFile::stream_buffer& buffer) {
  if (isatty(fileno(stream)) == 0) std::setvbuf(stream, buffer.data(), _IOFBF, buffer.size());
}

// Some file systems tell only when a file is closed that it could not be written: any of its descriptors will do.
bool close_copy_of(int descriptor) {
  const int copy = dup(descriptor);
  return copy < 0 || ::close(copy) == 0;
}

}  // namespace

COutputFile::~COutputFile() {
  if (out != nullptr) close();
  if (descriptor > STDOUT_FILENO) ::close(descriptor);
}

bool COutputFile::claim(const std::string& file_name) {
  name = file_name;
  was_created = access(name.c_str(), F_OK) != 0;
  descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  return descriptor >= 0;
}

bool COutputFile::claim(int open_file) {
  descriptor = open_file;
  return descriptor >= 0;
}

void COutputFile::claim_standard_output() {
  name = "standard output";
  descriptor = STDOUT_FILENO;
  out = stdout;
  static stream_buffer lasting_buffer;  // the system flushes standard output after all else
  use_buffer(out, lasting_buffer);
}

bool COutputFile::start() {
  if (out != nullptr) return true;
  if (is_regular(descriptor) && ftruncate(descriptor, 0) != 0) return false;
  out = fdopen(descriptor, "w");
  if (out == nullptr) return false;
  buffer = std::make_unique<stream_buffer>();
  use_buffer(out, *buffer);
  descriptor = -1;
  return true;
}

void COutputFile::abandon() {
  if (descriptor <= STDOUT_FILENO) return;
  ::close(descriptor);
  descriptor = -1;
  if (was_created) unlink(name.c_str());
}

bool COutputFile::is_same_file_as(const std::string& other_name) const {
  return is_same_regular_file(descriptor, other_name);
}

bool COutputFile::is_intact() const { return std::fflush(out) == 0 && std::ferror(out) == 0; }

bool COutputFile::close() {
  const bool written = is_intact();
  std::FILE* const closing = out;
  out = nullptr;
  return (closing == stdout ? close_copy_of(STDOUT_FILENO) : std::fclose(closing) == 0) && written;
}

void COutputFile::report_open_failure(const std::string& file_name, const std::string& reason) const {
  PrintMessage(stderr, "Sorry! Failed to open file\n   \"", file_name.c_str(), "\"\n", role, "\n");
  if (!reason.empty()) std::fprintf(stderr, "%s\n", reason.c_str());
}

void COutputFile::end_on_closed_pipe() const {
  if (descriptor != STDOUT_FILENO || !is_pipe(STDOUT_FILENO)) return;
  std::signal(SIGPIPE, SIG_DFL);
  std::raise(SIGPIPE);
}

void COutputFile::report_write_failure() const {
  end_on_closed_pipe();
  PrintMessage(stderr, "Sorry! Failed to write file\n   \"", name.c_str(), "\"\n", role, "\n");
}

bool is_same_regular_file(const std::string& name, const std::string& other_name) {
  struct stat one {};
  struct stat other {};
  return stat(name.c_str(), &one) == 0 && stat(other_name.c_str(), &other) == 0 && is_same(one, other);
}

bool is_same_regular_file(int descriptor, const std::string& name) {
  struct stat one {};
  struct stat other {};
  return fstat(descriptor, &one) == 0 && stat(name.c_str(), &other) == 0 && is_same(one, other);
}
