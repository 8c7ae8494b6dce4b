// Runs a fuzzer over the files and directories that are named, once each, and fails when they are fewer than the number
// in front of them: the main function of builds without libFuzzer.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_below(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Said before the run, so that the last line names the input that ended it.
void replay(const fs::path& file) {
  std::printf("%s\n", file.c_str());
  std::fflush(stdout);
  const std::string bytes = differential::read_file(file);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s INPUTS FILE ...\n", argv[0]);
    return EXIT_FAILURE;
  }
  const std::size_t least = std::strtoul(argv[1], nullptr, 10);
  std::size_t replayed = 0;
  try {
    for (int i = 2; i < argc; ++i) {
      for (const fs::path& file : files_below(argv[i])) {
        replay(file);
        ++replayed;
      }
    }
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return EXIT_FAILURE;
  }
  std::printf("%zu inputs replayed\n", replayed);
  return replayed == 0 || replayed < least ? EXIT_FAILURE : EXIT_SUCCESS;
}
