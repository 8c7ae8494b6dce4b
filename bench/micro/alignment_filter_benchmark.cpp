// Bit planes: making them, making the program of a unit length, running it over all positions.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "alignment-filter.h"
#include "alignment-program.h"
#include "bit-planes.h"
#include "support.h"

namespace {

void build_planes(benchmark::State& state) {
  const std::string text = random_sequence(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    CBitPlanes planes;
    planes.build(text.data(), text.size(), 64);
    benchmark::DoNotOptimize(planes.low(0));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(build_planes)->ArgName("symbols")->Arg(1000)->Arg(100000)->Arg(10000000)->Unit(benchmark::kMicrosecond);

void make_program(benchmark::State& state) {
  const alignment_bound bound = default_bound(static_cast<unsigned>(state.range(0)));
  for (auto _ : state) {
    alignment_program program = make_alignment_program(bound);
    benchmark::DoNotOptimize(program);
  }
  state.counters["operations"] = make_alignment_program(bound).operations;
}
BENCHMARK(make_program)->ArgName("L")->DenseRange(1, 14)->Unit(benchmark::kMicrosecond);

void run_program(benchmark::State& state) {
  const alignment_program program = make_alignment_program(default_bound(static_cast<unsigned>(state.range(0))));
  if (program.is_empty()) {
    state.SkipWithError("there is no program for this unit length");
    return;
  }
  const std::string text = sequence_with_repeats(1000000, 10);
  CBitPlanes planes;
  planes.build(text.data(), text.size(), static_cast<std::size_t>(program.reach));
  CPositionSet kept;
  for (auto _ : state) {
    kept.clear(text.size());
    run_alignment_program(program, planes, true, kept);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.counters["kept"] = share_of(kept);
}
BENCHMARK(run_program)->ArgName("L")->DenseRange(1, 14)->Unit(benchmark::kMicrosecond);

}  // namespace
