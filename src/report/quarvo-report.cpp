// The program entry of quarvo-report.

#include <csignal>
#include <cstdio>
#include <new>

#include "report-run.h"

int main(int argc, char** argv) {
  // A closed pipe and a file that may not grow are write errors like others, and are told as such.
  (void)std::signal(SIGPIPE, SIG_IGN);
  (void)std::signal(SIGXFSZ, SIG_IGN);
  try {
    return run_report(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("\nSorry! There is not enough memory for this report.\n", stderr);
    return report_status_out_of_memory;
  }
}
