// A library to be preloaded. By environment variables, counted from 1:
//   QUARVO_FAIL_READ=n    the n-th read of a block fails as a broken disk does
//   QUARVO_FAIL_CLOSE=n   the n-th close of a file that the program writes fails as a full disk across a network does
// Only blocks count as read, not the few bytes that libraries want to know of the system.

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t least_block = 4096;

// Whether this is the call whose number the variable holds.
bool is_due(const char* variable, int& calls) {
  const char* const number = std::getenv(variable);
  return number != nullptr && ++calls == std::atoi(number);
}

template <typename Function>
Function* real(Function* /*replacement*/, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool is_written(int descriptor) { return (fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_WRONLY; }

bool is_due_to_fail_at_close(int descriptor) {
  static int calls = 0;
  return is_written(descriptor) && is_due("QUARVO_FAIL_CLOSE", calls);
}

}  // namespace

extern "C" {

ssize_t read(int descriptor, void* buffer, std::size_t size) {
  static int calls = 0;
  if (size >= least_block && is_due("QUARVO_FAIL_READ", calls)) {
    errno = EIO;
    return -1;
  }
  return real(read, "read")(descriptor, buffer, size);
}

int close(int descriptor) {
  const bool fails = is_due_to_fail_at_close(descriptor);
  const int result = real(close, "close")(descriptor);
  if (!fails) return result;
  errno = EDQUOT;
  return -1;
}

int fclose(std::FILE* stream) {
  const bool fails = is_due_to_fail_at_close(fileno(stream));
  const int result = real(fclose, "fclose")(stream);
  if (!fails) return result;
  errno = EDQUOT;
  return EOF;
}

}  // extern "C"
