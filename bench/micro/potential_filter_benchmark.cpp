// The potential of long units: a run over a range of unit lengths.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "potential-filter.h"
#include "support.h"

namespace {

CPotentialFilter::settings default_settings(unsigned shortest, unsigned longest) {
  return {5, 5, 1, true, shortest, longest, [](unsigned L) { return static_cast<int>(std::max(6U, L)); }};
}

double share_kept(const CPotentialFilter& filter, unsigned L, std::size_t length) {
  CPositionSet kept(length);
  filter.place(L, kept);
  return share_of(kept);
}

// An item is a position and unit length.
void potential_filter(benchmark::State& state) {
  const std::string text = random_sequence(200000);
  const auto shortest = static_cast<unsigned>(state.range(0));
  const auto longest = static_cast<unsigned>(state.range(1));
  CPotentialFilter filter;
  for (auto _ : state) filter.run(text.data(), text.size(), default_settings(shortest, longest));
  unsigned tested = 0;
  while (filter.has(shortest + tested)) ++tested;
  if (tested == 0) {
    state.SkipWithError("nothing was tested");
    return;
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(text.size() * tested));
  state.counters["lengths"] = tested;
  state.counters["kept_of_shortest"] = share_kept(filter, shortest, text.size());
}
BENCHMARK(potential_filter)
    ->ArgNames({"from", "to"})
    ->Args({15, 20})
    ->Args({21, 50})
    ->Args({51, 100})
    ->Args({101, 200})
    ->Args({201, 400})
    ->Args({401, 1000})
    ->Unit(benchmark::kMillisecond);

}  // namespace
