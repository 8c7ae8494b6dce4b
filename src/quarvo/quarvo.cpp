// The program entry.

#include <cstdio>
#include <cstdlib>
#include <new>

#include "CFastShortcuts.h"
#include "Csat.h"
#include "out-of-memory.h"
#include "quarvo-interruption.h"
#include "quarvo-run.h"
#include "standard-streams.h"

namespace {

__attribute__((no_sanitize("address", "undefined"))) void prepare_for_missing_memory() {
  end_when_memory_runs_out(
      "\nSorry! There is not enough memory for this run.\n"
      "Please give it more memory, or split the longest sequences.\n"
      "\nAnalysis has been aborted due to errors. Error number: -106\n\n",
      status_out_of_memory);
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const run_before_the_libraries)() = prepare_for_missing_memory;

void end_without_memory_for_edits() {
  std::puts("Program aborded due to failed realloc!");
  std::fflush(stdout);
  std::exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  stop_on_signals();
  Csat::when_edits_lack_memory(end_without_memory_for_edits);
  try {
    CFastShortcuts shortcuts;
    return run_quarvo(argc, argv, &shortcuts);
  } catch (const std::bad_alloc&) {
    raise_out_of_memory();
  }
}
