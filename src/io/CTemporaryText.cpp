#include "CTemporaryText.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "CTemporaryFile.h"
#include "text-output.h"

namespace {

constexpr std::size_t block_size = std::size_t{1} << 20;

std::string directory() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::temp_directory_path(error);
  return error ? "/tmp" : path.string();
}

}  // namespace

CTemporaryText::~CTemporaryText() {
  if (file != nullptr) std::fclose(file);
}

void CTemporaryText::append(std::string_view text) {
  waiting.append(text);
  if (waiting.size() >= block_size) flush();
}

bool CTemporaryText::fail(const char* what) {
  if (problem.empty()) {
    problem = std::string("A temporary file in \"") + directory() + "\" could not be " + what + ": " +
              std::strerror(errno) + ".\nThe environment variable TMPDIR names the directory to use.";
  }
  return false;
}

bool CTemporaryText::make_file() {
  if (file != nullptr) return true;
  CTemporaryFile unnamed;
  if (!unnamed.create(directory())) return fail("made");
  unnamed.forget_name();
  const int descriptor = fcntl(unnamed.descriptor(), F_DUPFD_CLOEXEC, 0);
  if (descriptor < 0) return fail("made");
  file = fdopen(descriptor, "w+b");
  if (file != nullptr) return true;
  close(descriptor);
  return fail("made");
}

void CTemporaryText::flush() {
  errno = 0;
  if (problem.empty() && make_file()) {
    write(file, waiting);
    if (std::fflush(file) != 0 || std::ferror(file) != 0) fail("written");
  }
  waiting.clear();
}

bool CTemporaryText::copy_to(std::FILE* out) {
  if (file != nullptr && problem.empty()) {
    std::rewind(file);
    std::string block(block_size, '\0');
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file)) {
      write(out, std::string_view(block).substr(0, count));
    }
    if (std::ferror(file) != 0) fail("read");
  }
  write(out, waiting);
  return problem.empty();
}
