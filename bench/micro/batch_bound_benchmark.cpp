// The exact bound in byte lanes: full batches of candidates, and whole short records.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "batch-bound.h"
#include "support.h"

namespace {

// Candidates all over a sequence; time for each of them.
void batch_bound(benchmark::State& state) {
  const auto L = static_cast<unsigned>(state.range(0));
  const std::string text = sequence_with_repeats(100000, 10);
  const symbol_range record{text.data(), text.data() + text.size()};
  CBatchBound batch_bound;
  const std::size_t margin = 1000;
  std::array<const char*, CBatchBound::most_candidates> positions{};
  std::size_t p = margin;
  for (auto _ : state) {
    for (const char*& position : positions) {
      position = text.data() + p;
      p += 7;
    }
    if (p + 7 * positions.size() + margin > text.size()) p = margin;
    std::uint64_t kept = batch_bound.may_reach(default_bound(L), record, positions.data(), positions.size(), true);
    benchmark::DoNotOptimize(kept);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(positions.size()));
}
BENCHMARK(batch_bound)->ArgName("L")->Arg(2)->Arg(4)->Arg(6)->Arg(8)->Arg(10)->Arg(14)->Arg(20)->Arg(50)->Arg(100);

// All positions of a record of 100 symbols.
void batch_bound_of_record(benchmark::State& state) {
  const auto L = static_cast<unsigned>(state.range(0));
  constexpr std::size_t length = 100;
  const std::size_t margin = CBatchBound::reach(L) + L + CBatchBound::most_candidates;
  const std::string text = std::string(margin, '\0') + random_sequence(length) + std::string(margin, '\0');
  std::vector<std::uint64_t> kept(2);
  CBatchBound batch_bound;
  for (auto _ : state) {
    std::fill(kept.begin(), kept.end(), 0);
    for (std::size_t p = 0; p < length; p += CBatchBound::most_candidates) {
      kept[p / 64] = batch_bound.may_reach_next(default_bound(L), text.data() + margin + p, 64, true);
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(length));
}
BENCHMARK(batch_bound_of_record)->ArgName("L")->Arg(1)->Arg(2)->Arg(6)->Arg(10)->Arg(20);

}  // namespace
