// The program entry of quarvo-report.

#include <cstdio>
#include <new>

#include "report-run.h"
#include "standard-streams.h"

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  try {
    return run_report(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("Sorry! There is not enough memory for this report.\n", stderr);
    return report_status_out_of_memory;
  }
}
