#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// A directory of its own for a test, removed with everything in it.
class CTemporaryDirectory {
 public:
  CTemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quarvo-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    root = pattern;
  }
  CTemporaryDirectory(const CTemporaryDirectory&) = delete;
  CTemporaryDirectory& operator=(const CTemporaryDirectory&) = delete;
  ~CTemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
  }

  std::string path(const std::string& name) const { return (root / name).string(); }

  // Creates the file and returns its path.
  std::string write(const std::string& name, const std::string& contents) const {
    std::ofstream(path(name), std::ios::binary) << contents;
    return path(name);
  }

  bool has(const std::string& name) const { return std::filesystem::exists(root / name); }

  std::string contents(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path root;
};
