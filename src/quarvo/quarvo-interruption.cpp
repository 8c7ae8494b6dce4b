#include "quarvo-interruption.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "quarvo-messages.h"

namespace {

constexpr std::array stopping_signals{SIGINT, SIGTERM, SIGHUP};

constexpr int status_of_signal_0 = 128;
constexpr int milliseconds_for_the_text = 1000;

// Shared with the handler, which may run between any two instructions.
volatile std::sig_atomic_t is_held = 0;
volatile std::sig_atomic_t noted_signal = 0;

// Only what a signal handler may do. A full pipe that nobody reads must not keep the process from its end.
[[noreturn]] void stop(int signal) {
  pollfd messages{STDERR_FILENO, POLLOUT, 0};
  if (poll(&messages, 1, milliseconds_for_the_text) <= 0) _exit(status_of_signal_0 + signal);
  [[maybe_unused]] const auto written = write(STDERR_FILENO, stopped_by_user.data(), stopped_by_user.size());
  _exit(status_of_signal_0 + signal);
}

bool is_ignored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void take_signal(int signal) {
  if (is_held == 0) stop(signal);
  noted_signal = signal;
}

}  // namespace

// Calls that were under way go on after a noted signal: a write that it cut short would look like a full disk.
void stop_on_signals() {
  is_held = 0;
  noted_signal = 0;
  struct sigaction action {};
  action.sa_handler = take_signal;
  action.sa_flags = SA_RESTART;
  for (const int signal : stopping_signals) sigaddset(&action.sa_mask, signal);
  for (const int signal : stopping_signals) {
    if (signal != SIGHUP || !is_ignored(signal)) sigaction(signal, &action, nullptr);
  }
}

void hold_signals() { is_held = 1; }

// A signal that comes after the first line stops the process by itself.
CUninterrupted::~CUninterrupted() {
  is_held = 0;
  if (noted_signal != 0) stop(noted_signal);
}
