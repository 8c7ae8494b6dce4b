#include "runner.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "files.h"

namespace differential {

namespace {

void check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

// Both programs get the same name, so that messages that quote it do not differ.
std::vector<char*> argument_vector(std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return arguments;
}

class CSpawnActions {
 public:
  CSpawnActions() { check(posix_spawn_file_actions_init(&actions), "file actions"); }
  ~CSpawnActions() { posix_spawn_file_actions_destroy(&actions); }
  CSpawnActions(const CSpawnActions&) = delete;
  CSpawnActions& operator=(const CSpawnActions&) = delete;

  void change_directory(const char* path) {
    check(posix_spawn_file_actions_addchdir_np(&actions, path), "file action");
  }
  void open(int descriptor, const char* path, int flags) {
    check(posix_spawn_file_actions_addopen(&actions, descriptor, path, flags, 0666), "file action");
  }
  const posix_spawn_file_actions_t* get() const { return &actions; }

 private:
  posix_spawn_file_actions_t actions;
};

// Waits until the process ends or the time is over; says which.
bool ends_within(int process, int limit_in_seconds) {
  const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
  if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "pidfd_open");
  pollfd waited{descriptor, POLLIN, 0};
  int ready = 0;
  do {
    ready = poll(&waited, 1, limit_in_seconds * 1000);
  } while (ready < 0 && errno == EINTR);
  close(descriptor);
  return ready > 0;
}

int collect_status(int process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace

CRunner::CRunner(std::filesystem::path program_path, const std::filesystem::path& scratch)
    : program(std::move(program_path)), directory(make_directory(scratch)) {}

CRunner::~CRunner() {
  std::error_code ignored;
  std::filesystem::remove_all(directory, ignored);
}

void CRunner::clear_directory() const {
  for (const auto& entry : std::filesystem::directory_iterator(directory)) std::filesystem::remove_all(entry.path());
}

int CRunner::start(const test_case& tested) const {
  std::vector<std::string> words{"quarvo"};
  for (std::string& word : command_words(tested)) words.push_back(std::move(word));
  const std::vector<char*> arguments = argument_vector(words);
  CSpawnActions actions;
  actions.change_directory(directory.c_str());
  actions.open(STDIN_FILENO, "/dev/null", O_RDONLY);
  actions.open(STDOUT_FILENO, "stdout", O_WRONLY | O_CREAT | O_TRUNC);
  actions.open(STDERR_FILENO, "stderr", O_WRONLY | O_CREAT | O_TRUNC);
  pid_t process = 0;
  check(posix_spawn(&process, program.c_str(), actions.get(), nullptr, arguments.data(), environ), "posix_spawn");
  return process;
}

run_outcome CRunner::run(const test_case& tested, int limit_in_seconds) const {
  clear_directory();
  write_file(directory / input_name, tested.fasta);
  run_outcome outcome;
  const int process = start(tested);
  outcome.ended = ends_within(process, limit_in_seconds);
  if (!outcome.ended) kill(process, SIGKILL);
  outcome.status = collect_status(process);
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    outcome.files[entry.path().filename()] = read_file(entry.path());
  }
  return outcome;
}

}  // namespace differential
