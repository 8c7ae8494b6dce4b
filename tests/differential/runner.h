// Runs one program on one case in a directory of its own and collects everything that it leaves behind.
//
// A runner belongs to one thread. Its directory is made by the constructor and removed by the destructor.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "test-case.h"

namespace differential {

struct run_outcome {
  bool ended = false;  // false: killed at the time limit
  int status = 0;      // the exit status, or minus the number of the signal that ended the program
  std::map<std::string, std::string> files;  // by name: "stdout", "stderr" and every file written
};

class CRunner {
 public:
  // The scratch directory exists; the runner's own is made inside it.
  CRunner(std::filesystem::path program_path, const std::filesystem::path& scratch);
  ~CRunner();
  CRunner(const CRunner&) = delete;
  CRunner& operator=(const CRunner&) = delete;

  // Throws std::system_error if the program cannot be started.
  run_outcome run(const test_case& tested, int limit_in_seconds) const;

 private:
  std::filesystem::path program;
  std::filesystem::path directory;

  void clear_directory() const;
  int start(const test_case& tested) const;
};

}  // namespace differential
