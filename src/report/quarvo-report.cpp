// The program entry of quarvo-report.

#include <new>

#include "out-of-memory.h"
#include "report-run.h"
#include "standard-streams.h"

namespace {

__attribute__((no_sanitize("address", "undefined"))) void prepare_for_missing_memory() {
  end_when_memory_runs_out("Sorry! There is not enough memory for this report.\n", report_status_out_of_memory);
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const run_before_the_libraries)() = prepare_for_missing_memory;

}  // namespace

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  try {
    return run_report(argc, argv);
  } catch (const std::bad_alloc&) {
    raise_out_of_memory();
  }
}
