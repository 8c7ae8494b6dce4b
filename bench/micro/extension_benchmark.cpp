// The extension of single candidates, and its look-ahead by recursion depth.

#include <benchmark/benchmark.h>

#include <string>

#include "CSequence_Mol.h"
#include "Csat.h"
#include "global-types-and-parameters.h"
#include "support.h"

namespace {

// Candidates at every seventh position; time for each of them.
void extend_all(benchmark::State& state, const std::string& text, unsigned L) {
  CSequence_Mol record(1, 'N');
  fill(record, text);
  CFastSearch search(record);
  const char* const begin = record.symbols.buffer;
  std::size_t p = 0;
  std::size_t accepted = 0;
  Csat sat;
  for (auto _ : state) {
    sat.reset(begin + p, begin + p + L);
    accepted += search.controller.extend_imperfect(sat) ? 1U : 0U;
    p += 7;
    if (p + L + 1 > text.size()) p = 0;
  }
  state.counters["accepted"] = static_cast<double>(accepted) / static_cast<double>(state.iterations());
}

// Nearly all are given up at their bound.
void extend_random(benchmark::State& state) {
  set_parameters(10);
  extend_all(state, random_sequence(100000), static_cast<unsigned>(state.range(0)));
}
BENCHMARK(extend_random)->ArgName("L")->Arg(2)->Arg(4)->Arg(6)->Arg(10);

// A repeat of 1000 symbols with an edit every 20: the whole extension, at recursion depth `range`.
void extend_repeat(benchmark::State& state) {
  set_parameters(10);
  global_maximum_recursion_depth = static_cast<int>(state.range(0));
  std::string text;
  for (int i = 0; i < 50; ++i) text.append("ACGTTACGTTACGTTACGT").push_back(i % 2 == 0 ? 'G' : 'A');
  extend_all(state, text, 5);
}
BENCHMARK(extend_repeat)->ArgName("r")->Arg(1)->Arg(5)->Arg(10)->Arg(20)->Arg(50)->Unit(benchmark::kMicrosecond);

// The same where a score reduction makes each edit take look-aheads of its own.
void extend_repeat_reduced(benchmark::State& state) {
  set_parameters(10);
  global_maximum_recursion_depth = static_cast<int>(state.range(0));
  global_maximum_scorereduction = 15;
  std::string text;
  for (int i = 0; i < 50; ++i) text.append("ACGTTACGTTACGTTACGT").push_back(i % 2 == 0 ? 'G' : 'A');
  extend_all(state, text, 5);
}
BENCHMARK(extend_repeat_reduced)->ArgName("r")->Arg(1)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMicrosecond);

}  // namespace
