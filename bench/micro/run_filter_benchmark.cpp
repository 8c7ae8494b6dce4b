// The filter of the exact search: a walk over all the positions that it keeps.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "run-filter.h"
#include "support.h"

namespace {

void run_filter(benchmark::State& state) {
  const std::string text = sequence_with_repeats(1000000, 10);
  const char* const end = text.data() + text.size();
  const auto L = static_cast<unsigned>(state.range(0));
  const int wanted = CRunFilter::wanted_matches(L, static_cast<int>(L < 6 ? 6 : L), 0);
  std::size_t kept = 0;
  for (auto _ : state) {
    const auto filter = std::make_unique<CRunFilter>(text.data(), end, L, wanted, true);
    kept = 0;
    for (const char* p = filter->first_kept(text.data()); p < end - L; p = filter->first_kept(p + 1)) ++kept;
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.counters["kept"] = static_cast<double>(kept) / static_cast<double>(text.size());
}
BENCHMARK(run_filter)->ArgName("L")->Arg(1)->Arg(2)->Arg(3)->Arg(6)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

}  // namespace
