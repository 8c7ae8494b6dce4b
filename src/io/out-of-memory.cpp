#include "out-of-memory.h"

#include <unistd.h>

#include <cstring>
#include <new>

#include "CTemporaryFile.h"

namespace {

const char* last_text = "";
int last_status = 1;

[[noreturn]] void end() {
  remove_unnamed_file();
  [[maybe_unused]] const auto written = write(STDERR_FILENO, last_text, std::strlen(last_text));
  _exit(last_status);
}

}  // namespace

// The sanitizers may not have been started yet.
__attribute__((no_sanitize("address", "undefined"))) void end_when_memory_runs_out(const char* text, int status) {
  last_text = text;
  last_status = status;
  std::set_new_handler(end);
}

void raise_out_of_memory() {
  if (const std::new_handler handler = std::get_new_handler()) handler();
  throw std::bad_alloc();
}
