#include "program-run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

namespace {

constexpr const char* closing_line = "## Finished successfully. ##\n";
constexpr int pipe_size = 1 << 20;

std::string random_symbols(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::string symbols;
  for (std::size_t i = 0; i < count; ++i) symbols += "ACGT"[random() % 4];
  return symbols;
}

}  // namespace

FaultTest::FaultTest() { std::filesystem::create_symlink(QUARVO_PROGRAM, path("quarvo")); }

FaultTest::~FaultTest() {
  if (process != 0) {
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
  }
  if (message_pipe >= 0) close(message_pipe);
}

void FaultTest::start(const std::string& command, long largest_file) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
  fcntl(ends[1], F_SETPIPE_SZ, pipe_size);
  fcntl(ends[1], F_SETFL, 0);
  process = fork();
  ASSERT_GE(process, 0);
  if (process == 0) become(command, largest_file, ends[1]);
  close(ends[1]);
  if (message_pipe >= 0) close(message_pipe);
  message_pipe = ends[0];
  messages_read.clear();
}

void FaultTest::become(const std::string& command, long largest_file, int messages_to) const {
  if (chdir(path("").c_str()) != 0) _exit(126);
  for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGPIPE, SIGXFSZ}) (void)std::signal(signal, SIG_DFL);
  if (largest_file >= 0) {
    const rlimit limit{static_cast<rlim_t>(largest_file), static_cast<rlim_t>(largest_file)};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(126);
  }
  dup2(messages_to, STDERR_FILENO);
  execl("/bin/bash", "bash", "-c", ("PATH=$PWD:$PATH; " + command).c_str(), nullptr);
  _exit(127);
}

int FaultTest::wait() {
  int status = 0;
  waitpid(process, &status, 0);
  process = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int FaultTest::run(const std::string& command, long largest_file) {
  start(command, largest_file);
  return wait();
}

void FaultTest::send(int signal) const { ASSERT_EQ(kill(process, signal), 0); }

bool FaultTest::is_running() const {
  siginfo_t info{};
  return waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
}

std::string FaultTest::messages() {
  std::array<char, 4096> piece{};
  for (;;) {
    const auto count = read(message_pipe, piece.data(), piece.size());
    if (count <= 0) return messages_read;
    messages_read.append(piece.data(), static_cast<std::size_t>(count));
  }
}

void FaultTest::wait_for_message(const std::string& text) {
  for (int i = 0; i < 120000; ++i) {
    const bool was_running = is_running();
    if (has(messages(), text)) return;
    if (!was_running) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  FAIL() << "no \"" << text << "\" in the messages:\n" << messages();
}

std::string FaultTest::good_results(const std::string& command) {
  EXPECT_EQ(run(command), 0);
  EXPECT_TRUE(messages().ends_with(good_byes)) << messages();
  return file("results");
}

std::string records(int number) {
  std::string fasta;
  for (int i = 1; i <= number; ++i) {
    const std::string symbols = random_symbols(100, static_cast<unsigned>(i));
    fasta.append(">r").append(std::to_string(i)).append("\n").append(symbols).append("\n");
    fasta.append("ACACACACACACAGACACACACAC\n").append(symbols).append("\n");
  }
  return fasta;
}

std::string random_record(const std::string& name, std::size_t length) {
  return ">" + name + "\n" + random_symbols(length, 0) + "\n";
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

bool is_cut_between_records(const std::string& part, const std::string& whole) {
  if (!whole.starts_with(part) || !part.ends_with("\n")) return false;
  const std::string rest = whole.substr(part.size());
  return rest.starts_with(">") || rest == closing_line;
}

std::string without_closing_line(const std::string& results) {
  EXPECT_TRUE(results.ends_with(closing_line));
  return results.substr(0, results.size() - std::string(closing_line).size());
}

std::string abort_text(int status) {
  return "\nAnalysis has been aborted due to errors. Error number: " + std::to_string(status) + "\n\n";
}
