// Reading FASTA: the vector copy in memory, and whole records from a file that the system holds in memory.

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "CFile.h"
#include "CSequence_Mol.h"
#include "support.h"
#include "symbol-copy.h"

namespace {

constexpr std::size_t symbols = 10000000;

std::string lines_of(const std::string& text, std::size_t width) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); i += width) lines.append(text, i, width).push_back('\n');
  return lines;
}

// A file that is gone when the benchmark is.
class CTemporaryFile {
 public:
  explicit CTemporaryFile(const std::string& text) {
    const int descriptor = mkstemp(its_name.data());
    std::FILE* const file = descriptor == -1 ? nullptr : fdopen(descriptor, "w");
    if (file == nullptr) return;
    const bool is_written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    is_complete = std::fclose(file) == 0 && is_written;
  }
  CTemporaryFile(const CTemporaryFile&) = delete;
  CTemporaryFile& operator=(const CTemporaryFile&) = delete;
  ~CTemporaryFile() { unlink(name()); }

  const char* name() const { return its_name.c_str(); }
  bool is_usable() const { return is_complete; }

 private:
  std::string its_name = "quarvo-micro-XXXXXX";
  bool is_complete = false;
};

void report_symbols(benchmark::State& state, std::size_t count) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

void copy_lines(benchmark::State& state) {
  const std::string text = lines_of(random_sequence(symbols), static_cast<std::size_t>(state.range(0)));
  std::string to(text.size(), ' ');
  for (auto _ : state) {
    copied_lines copied = copy_symbol_lines(text.data(), text.size(), to.data());
    benchmark::DoNotOptimize(copied);
    benchmark::ClobberMemory();
  }
  report_symbols(state, symbols);
}
BENCHMARK(copy_lines)->ArgName("line")->Arg(60)->Arg(80)->Arg(10000000);

void read_file(benchmark::State& state, const std::string& text, std::size_t count) {
  const CTemporaryFile file(text);
  if (!file.is_usable()) {
    state.SkipWithError("no temporary file");
    return;
  }
  CSequence_Mol record(1, 'N');
  record.symbols.reserve(symbols);
  for (auto _ : state) {
    const auto input = std::make_unique<CFile>();
    input->open(file.name());
    while (!input->at_end_of_file()) record.readFastaSequence(*input);
  }
  report_symbols(state, count);
}

void read_record(benchmark::State& state) {
  read_file(state, ">one\n" + lines_of(random_sequence(symbols), static_cast<std::size_t>(state.range(0))), symbols);
}
BENCHMARK(read_record)->ArgName("line")->Arg(60)->Arg(80)->Arg(10000000)->Unit(benchmark::kMillisecond);

// Ambiguity codes are left to the reader's byte by byte path: here one symbol in `range`.
void read_ambiguous(benchmark::State& state) {
  std::string text = random_sequence(symbols);
  for (std::size_t i = 0; i < text.size(); i += static_cast<std::size_t>(state.range(0))) text[i] = 'R';
  read_file(state, ">one\n" + lines_of(text, 60), symbols);
}
BENCHMARK(read_ambiguous)->ArgName("every")->Arg(1)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void read_short_records(benchmark::State& state) {
  const std::string text = random_sequence(symbols / 10);
  std::string file;
  for (std::size_t i = 0; i < text.size(); i += 100) file.append(">a name\n").append(text, i, 100).push_back('\n');
  read_file(state, file, text.size());
}
BENCHMARK(read_short_records)->Unit(benchmark::kMillisecond);

}  // namespace
