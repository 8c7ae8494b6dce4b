#include "standard-streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

void occupy_standard_streams() {
  constexpr int access_modes[] = {O_RDONLY, O_RDONLY, O_WRONLY};
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (fcntl(stream, F_GETFD) == -1) (void)open("/dev/null", access_modes[stream]);
  }
}

void take_signals_of_writing_as_errors() {
  (void)std::signal(SIGPIPE, SIG_IGN);
  (void)std::signal(SIGXFSZ, SIG_IGN);
}
