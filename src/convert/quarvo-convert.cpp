// The program entry of quarvo-convert.

#include <cstdio>
#include <new>

#include "convert-run.h"
#include "standard-streams.h"

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  try {
    return run_convert(argc, argv);
  } catch (const std::bad_alloc&) {
    std::fputs("Sorry! There is not enough memory for this conversion.\n", stderr);
    return convert_status_out_of_memory;
  }
}
