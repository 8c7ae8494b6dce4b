// The program entry.

#include <cstdio>
#include <new>

#include "quarvo-interruption.h"
#include "quarvo-messages.h"
#include "quarvo-run.h"
#include "standard-streams.h"

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  stop_on_signals();
  try {
    return run_quarvo(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs(
        "\nSorry! There is not enough memory for this run.\n"
        "Please give it more memory, or split the longest sequences.\n",
        stderr);
    good_bye_on_error(status_out_of_memory);
    return status_out_of_memory;
  }
}
