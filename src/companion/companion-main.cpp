// The program entry of each companion.

#include <new>

#include "companion.h"
#include "out-of-memory.h"
#include "standard-streams.h"

namespace {

__attribute__((no_sanitize("address", "undefined"))) void prepare_for_missing_memory() {
  end_when_memory_runs_out(this_companion.out_of_memory_message, companion_status::out_of_memory);
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const run_before_the_libraries)() = prepare_for_missing_memory;

}  // namespace

int main(int argc, char** argv) {
  occupy_standard_streams();
  take_signals_of_writing_as_errors();
  try {
    return this_companion.run(argc, argv);
  } catch (const std::bad_alloc&) {
    raise_out_of_memory();
  }
}
