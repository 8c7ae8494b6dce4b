// Whole searches of one record without reading and report, and the removal of overlapping repeats.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

#include "CSearchController.h"
#include "CSequence_Mol.h"
#include "global-types-and-parameters.h"
#include "support.h"

namespace {

template <typename Search>
void search_record(benchmark::State& state, unsigned longest_unit, std::size_t length, Search search) {
  set_parameters(longest_unit);
  CSequence_Mol record(1, 'N');
  fill(record, sequence_with_repeats(length, longest_unit));
  std::size_t repeats = 0;
  for (auto _ : state) {
    CFastSearch fast(record);
    CSearchController& controller = fast.controller;
    search(controller);
    repeats = controller.work_list.records.size() + controller.result_list.records.size();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(length));
  state.counters["repeats"] = static_cast<double>(repeats);
}

void search_exact(benchmark::State& state) {
  search_record(state, static_cast<unsigned>(state.range(0)), 1000000,
                [](CSearchController& controller) { controller.exact_search_2(); });
}
BENCHMARK(search_exact)->ArgName("U")->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void search_extend_exact(benchmark::State& state) {
  search_record(state, static_cast<unsigned>(state.range(0)), 1000000,
                [](CSearchController& controller) { controller.search_exact_and_extend_to_imperfect_repeats(); });
}
BENCHMARK(search_extend_exact)->ArgName("U")->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void search_imperfect(benchmark::State& state) {
  search_record(state, static_cast<unsigned>(state.range(0)), 200000,
                [](CSearchController& controller) { controller.complete_imperfect_search(stderr); });
}
BENCHMARK(search_imperfect)->ArgName("U")->Arg(1)->Arg(10)->Arg(20)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

// Of all that is found with a low threshold, most overlaps. Filling the list again is not counted.
void remove_hidden(benchmark::State& state) {
  set_parameters(10);
  CSequence_Mol record(1, 'N');
  fill(record, sequence_with_repeats(static_cast<std::size_t>(state.range(0)), 10));
  std::size_t found = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto fast = std::make_unique<CFastSearch>(record);
    CSearchController* const controller = &fast->controller;
    controller->complete_imperfect_search(stderr);
    found = controller->work_list.records.size();
    state.ResumeTiming();
    CSearchController::remove_hidden(controller->work_list);
    state.PauseTiming();
    fast.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(found));
}
BENCHMARK(remove_hidden)->ArgName("symbols")->Arg(1000000)->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace
