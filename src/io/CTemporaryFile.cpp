#include "CTemporaryFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace {

bool does_use_names_alone = false;

// The file to be removed when the process ends too early; empty: none. Changed only while signals are blocked.
std::array<char, PATH_MAX> file_to_remove{};

// No signal comes between the making of a file and the note of its name.
class CBlockedSignals {
 public:
  CBlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &former);
  }
  CBlockedSignals(const CBlockedSignals&) = delete;
  CBlockedSignals& operator=(const CBlockedSignals&) = delete;
  ~CBlockedSignals() {
    const int error = errno;
    sigprocmask(SIG_SETMASK, &former, nullptr);
    errno = error;
  }

 private:
  sigset_t former{};
};

// The signal comes again when the handler is left, and finds its usual action.
void end_by_signal(int signal) {
  remove_unnamed_file();
  (void)std::raise(signal);
}

bool ends_a_process(int signal) {
  constexpr std::array others{SIGKILL, SIGSTOP, SIGCONT, SIGCHLD, SIGURG, SIGWINCH, SIGTSTP, SIGTTIN, SIGTTOU};
  return std::find(others.begin(), others.end(), signal) == others.end();
}

// Only signals with their usual action: what the program or its caller has settled stays.
void remove_on_signals() {
  for (int signal = 1; signal < NSIG; ++signal) {
    struct sigaction action {};
    if (!ends_a_process(signal) || sigaction(signal, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action = {};
    action.sa_handler = end_by_signal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
}

void note(const std::string& name) {
  static const bool is_watching = (remove_on_signals(), true);
  (void)is_watching;
  const std::size_t length = name.copy(file_to_remove.data(), file_to_remove.size() - 1);
  file_to_remove[length] = '\0';
}

// A new name on each call, or an empty one where the system has no random numbers.
std::string unguessable_name(const std::string& directory) {
  std::array<unsigned char, 12> random{};
  if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) return "";
  std::string name = directory + "/.quarvo-unfinished-";
  for (const unsigned char byte : random) {
    std::array<char, 3> digits{};
    std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(byte));
    name += digits.data();
  }
  return name;
}

std::string link_of(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// Whoever could not read the file that is replaced must not read this one through its group either.
mode_t without_group(mode_t mode) { return (mode & ~mode_t{S_IRWXG}) | ((mode & S_IRWXO) << 3 & mode & S_IRWXG); }

}  // namespace

void remove_unnamed_file() {
  if (file_to_remove[0] != '\0') unlink(file_to_remove.data());
}

void CTemporaryFile::use_names_alone(bool does_so) { does_use_names_alone = does_so; }

bool CTemporaryFile::create(const std::string& directory) {
  discard();
  directory_name = directory;
  return create_without_name() || create_with_name();
}

// It gets its name through the link that the system keeps of every open file, so that must be there.
bool CTemporaryFile::create_without_name() {
  if (does_use_names_alone) return false;
  its_descriptor = open(directory_name.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
  if (its_descriptor < 0) return false;
  if (access(link_of(its_descriptor).c_str(), F_OK) == 0) return true;
  close(its_descriptor);
  its_descriptor = -1;
  return false;
}

bool CTemporaryFile::create_with_name() {
  const CBlockedSignals none;
  do {
    own_name = unguessable_name(directory_name);
    if (own_name.empty()) return false;
    its_descriptor = open(own_name.c_str(), O_CREAT | O_EXCL | O_NOFOLLOW | O_RDWR | O_CLOEXEC, 0666);
  } while (its_descriptor < 0 && errno == EEXIST);
  if (its_descriptor >= 0) {
    note(own_name);
    return true;
  }
  own_name.clear();
  return false;
}

void CTemporaryFile::take_mode_of(const std::string& file_name) const {
  struct stat wanted {};
  struct stat mine {};
  if (stat(file_name.c_str(), &wanted) != 0 || fstat(its_descriptor, &mine) != 0) return;
  constexpr mode_t permissions = S_IRWXU | S_IRWXG | S_IRWXO;
  mode_t mode = wanted.st_mode & permissions;
  if (wanted.st_uid != mine.st_uid && fchown(its_descriptor, wanted.st_uid, wanted.st_gid) == 0) mine = wanted;
  if (wanted.st_gid != mine.st_gid && fchown(its_descriptor, static_cast<uid_t>(-1), wanted.st_gid) != 0) {
    mode = without_group(mode);
  }
  fchmod(its_descriptor, mode);
}

bool CTemporaryFile::link_to_own_name() {
  const std::string link = link_of(its_descriptor);
  do {
    own_name = unguessable_name(directory_name);
    if (own_name.empty()) return false;
    if (linkat(AT_FDCWD, link.c_str(), AT_FDCWD, own_name.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
  } while (errno == EEXIST);
  own_name.clear();
  return false;
}

// A file without a name cannot take the place of another in one step; the name between is there for a moment in which
// only a signal that cannot be caught ends the process.
bool CTemporaryFile::give_name(const std::string& name, bool may_replace) {
  const CBlockedSignals none;
  if (own_name.empty()) {
    const std::string link = link_of(its_descriptor);
    if (linkat(AT_FDCWD, link.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
    if (errno != EEXIST || !may_replace || !link_to_own_name()) return false;
  } else if (!may_replace && access(name.c_str(), F_OK) == 0) {
    errno = EEXIST;
    return false;
  }
  const bool is_renamed = rename(own_name.c_str(), name.c_str()) == 0;
  const int error = errno;
  if (!is_renamed) unlink(own_name.c_str());
  own_name.clear();
  note("");
  errno = error;
  return is_renamed;
}

void CTemporaryFile::forget_name() {
  if (own_name.empty()) return;
  const CBlockedSignals none;
  unlink(own_name.c_str());
  own_name.clear();
  note("");
}

void CTemporaryFile::discard() {
  forget_name();
  if (its_descriptor >= 0) close(its_descriptor);
  its_descriptor = -1;
}
