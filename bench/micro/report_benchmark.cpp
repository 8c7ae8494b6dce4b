// Writing the repeats of a record, by output format and what is shown of the sequence; time for each repeat.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "CSearchController.h"
#include "CSequence_Mol.h"
#include "global-types-and-parameters.h"
#include "support.h"

namespace {

void report(benchmark::State& state) {
  set_parameters(10);
  global_print_sat_mode = static_cast<int>(state.range(0));
  global_print_sat_seq_mode = static_cast<int>(state.range(1));
  global_flanking = static_cast<int>(state.range(2));
  CSequence_Mol record(1, 'N');
  fill(record, sequence_with_repeats(1000000, 10));
  CSearchController controller(1, record);
  controller.complete_imperfect_search(stderr);
  CSearchController::remove_hidden(controller.work_list);
  std::FILE* const sink = std::fopen("/dev/null", "w");
  if (sink == nullptr) {
    state.SkipWithError("there is no /dev/null");
    return;
  }
  for (auto _ : state) controller.report_SATList(sink, controller.work_list.records);
  std::fclose(sink);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(controller.work_list.records.size()));
}
BENCHMARK(report)
    ->ArgNames({"format", "sequence", "flank"})
    ->Args({quarvo_format, print_no_sequence, 0})
    ->Args({quarvo_format, print_sequence, 0})
    ->Args({quarvo_format, print_alignment, 0})
    ->Args({extended_quarvo_format, print_alignment, 0})
    ->Args({extended_quarvo_format, print_alignment, 50})
    ->Args({gff_format, print_no_sequence, 0})
    ->Args({one_per_line_format, print_no_sequence, 0})
    ->Args({one_per_line_format, print_no_sequence, 50})
    ->Args({fasta_format, print_no_sequence, 50})
    ->Unit(benchmark::kMillisecond);

}  // namespace
