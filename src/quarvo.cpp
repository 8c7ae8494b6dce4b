// The program entry.

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <new>

#include "quarvo-interruption.h"
#include "quarvo-messages.h"
#include "quarvo-run.h"

// A standard stream that the caller closed must not become the number of a file opened later, or results would land in
// it. The stand-in for standard output cannot be written, so that results sent there are an error.
static void occupy_standard_streams() {
  constexpr int access_modes[] = {O_RDONLY, O_RDONLY, O_WRONLY};
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (fcntl(stream, F_GETFD) == -1) (void)open("/dev/null", access_modes[stream]);
  }
}

int main(int argc, char** argv) {
  occupy_standard_streams();
  // A closed pipe and a file that may not grow are write errors like others, and are told as such.
  (void)std::signal(SIGPIPE, SIG_IGN);
  (void)std::signal(SIGXFSZ, SIG_IGN);
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
