#include "files.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace differential {

std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(file ? std::filesystem::file_size(path) : 0), '\0');
  if (!file || !file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
    throw std::runtime_error("cannot read " + path.string());
  }
  return bytes;
}

void write_file(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes << std::flush;
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::filesystem::path make_directory(const std::filesystem::path& parent) {
  std::string name = (parent / "run-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  return name;
}

}  // namespace differential
