// The whole program in this process, against the reference program, byte for byte: results, masked file, standard error
// and exit status.
//
// Input: a byte whose lowest bit sends the results to standard output and whose next one lets the program, not the
// reference, read the file compressed; then the options (option-bytes.h), and the FASTA file down to what the reference
// searches in a moment.

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "CSearchController.h"
#include "argument-vector.h"
#include "comparison.h"
#include "files.h"
#include "option-bytes.h"
#include "plain-gzip.h"
#include "printable-text.h"
#include "quarvo-run.h"
#include "reference-cost.h"

namespace {

namespace fs = std::filesystem;

constexpr double affordable_cost = 1e6;
constexpr int reference_limit_in_seconds = 2;

// The working directory while this lives: both programs are to name their files alike.
class CWorkingDirectory {
 public:
  explicit CWorkingDirectory(const fs::path& directory) : usual(open(".", O_DIRECTORY | O_CLOEXEC)) {
    if (usual < 0 || chdir(directory.c_str()) != 0) std::abort();
  }
  CWorkingDirectory(const CWorkingDirectory&) = delete;
  CWorkingDirectory& operator=(const CWorkingDirectory&) = delete;
  ~CWorkingDirectory() {
    if (fchdir(usual) != 0) std::abort();
    close(usual);
  }

 private:
  int usual;
};

// A standard stream that goes to a file while this lives. The descriptors stay as they are, for the sanitizers.
class CRedirected {
 public:
  CRedirected(std::FILE*& its_stream, const char* file) : stream(its_stream), usual(its_stream) {
    stream = std::fopen(file, "w");
    if (stream == nullptr) std::abort();
  }
  CRedirected(const CRedirected&) = delete;
  CRedirected& operator=(const CRedirected&) = delete;
  ~CRedirected() {
    std::fclose(stream);
    stream = usual;
  }

 private:
  std::FILE*& stream;
  std::FILE* usual;
};

int run_program(const std::vector<std::string>& words) {
  const CRedirected standard_output(stdout, "stdout");
  const CRedirected standard_error(stderr, "stderr");
  CSearchController::reset_minimum_arrays();
  CArgumentVector arguments(words);
  return run_quarvo(arguments.argc(), arguments.argv()) & 0xFF;
}

// Runs both programs and counts what became of that.
class CComparison {
 public:
  CComparison() = default;
  CComparison(const CComparison&) = delete;
  CComparison& operator=(const CComparison&) = delete;
  ~CComparison() {
    std::fprintf(stderr, "%lu runs compared with the reference, %lu in which it was too slow\n", compared, too_slow);
    std::error_code ignored;
    fs::remove_all(directory, ignored);
  }

  void check(const differential::test_case& tested, const std::string& input) {
    differential::run_outcome program = run_here(tested, input);
    if (program.files[differential::input_name] != input) std::abort();
    program.files[differential::input_name] = tested.fasta;
    const differential::run_outcome other = reference.run(tested, reference_limit_in_seconds);
    if (!other.ended) {
      ++too_slow;
      return;
    }
    ++compared;
    if (const auto found = differential::compare(program, other)) fail(tested, *found);
  }

 private:
  fs::path directory = differential::make_directory(fs::temp_directory_path());
  differential::CRunner reference{QUARVO_REFERENCE, directory};
  fs::path own_directory = differential::make_directory(directory);
  unsigned long compared = 0;
  unsigned long too_slow = 0;

  differential::run_outcome run_here(const differential::test_case& tested, const std::string& input) const {
    for (const auto& entry : fs::directory_iterator(own_directory)) fs::remove(entry.path());
    const CWorkingDirectory inside(own_directory);
    differential::write_file(differential::input_name, input);
    differential::run_outcome outcome;
    outcome.status = run_program(differential::command_words(tested));
    outcome.ended = true;
    for (const auto& entry : fs::directory_iterator(".")) {
      outcome.files[entry.path().filename()] = differential::read_file(entry.path());
    }
    return outcome;
  }

  [[noreturn]] static void fail(const differential::test_case& tested, const differential::difference& found) {
    std::fprintf(stderr, "DIFFERENCE in %s: %s\n%s > in.fa\n%s\n", found.channel.c_str(), found.text.c_str(),
                 differential::printing_command(tested.fasta).c_str(),
                 differential::command_line("quarvo", tested).c_str());
    std::abort();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static CComparison comparison;
  if (size == 0) return 0;
  const fuzz_case made = take_options(data + 1, size - 1);
  differential::test_case tested;
  tested.options.push_back(made.words);
  tested.fasta = made.rest.substr(
      0, differential::affordable_symbols(made.settings, differential::texture::dense, affordable_cost));
  if (is_gzip(tested.fasta)) return 0;  // the reference knows plain files alone
  if ((data[0] & 1) != 0) tested.file_names = differential::names_with_standard_output;
  comparison.check(tested, (data[0] & 2) == 0 ? tested.fasta : compressed(tested.fasta, data[0] / 4U));
  return 0;
}
