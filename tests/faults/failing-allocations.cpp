// Memory that runs out. Linked into a second build of the program, it replaces the allocation functions there, so that
// also what the libraries allocate is counted, and works under the sanitizers. By environment variables:
//   QUARVO_FAIL_ALLOCATION=n   the n-th allocation fails, counted from 1
//   QUARVO_FAIL_ALL_BEHIND=1   so do all after it
//   QUARVO_COUNT_ALLOCATIONS=file   the number of allocations is written there at the end
// What shared libraries allocate to get started, before anything of the program runs, is theirs and does not count.

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

// The functions that would be there without this file.
#if defined(__SANITIZE_ADDRESS__)
#define QUARVO_REAL(function) __interceptor_##function
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUARVO_REAL(function) __interceptor_##function
#endif
#endif
#ifndef QUARVO_REAL
#define QUARVO_REAL(function) __libc_##function
#endif

extern "C" {
void* QUARVO_REAL(malloc)(std::size_t size);
void* QUARVO_REAL(calloc)(std::size_t count, std::size_t size);
void* QUARVO_REAL(realloc)(void* old, std::size_t size);
void QUARVO_REAL(free)(void* memory);
}

// A constructor of the command-line parser leaks when it does not come to its end.
extern "C" const char* __lsan_default_suppressions() { return "leak:TCLAP::CmdLine::_constructor\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }

namespace {

long allocations = 0;
long failing_allocation = 0;
bool do_all_after_fail = false;
bool is_counting = false;

void write_count() {
  const char* const name = std::getenv("QUARVO_COUNT_ALLOCATIONS");
  if (name == nullptr) return;
  is_counting = false;
  std::FILE* const out = std::fopen(name, "w");
  std::fprintf(out, "%ld\n", allocations);
  std::fclose(out);
}

// Runs after the start of the libraries and in front of everything of the program.
[[gnu::constructor(101)]] void start_counting() {
  const char* const number = std::getenv("QUARVO_FAIL_ALLOCATION");
  if (number != nullptr) failing_allocation = std::atol(number);
  do_all_after_fail = std::getenv("QUARVO_FAIL_ALL_BEHIND") != nullptr;
  std::atexit(write_count);
  is_counting = true;
}

bool is_to_fail() {
  if (!is_counting) return false;
  ++allocations;
  return allocations == failing_allocation ||
         (do_all_after_fail && failing_allocation != 0 && allocations > failing_allocation);
}

void* allocate_or_throw(std::size_t size) {
  for (;;) {
    void* const memory = is_to_fail() ? nullptr : QUARVO_REAL(malloc)(size);
    if (memory != nullptr) return memory;
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept { return is_to_fail() ? nullptr : QUARVO_REAL(malloc)(size); }

void* calloc(std::size_t count, std::size_t size) noexcept {
  return is_to_fail() ? nullptr : QUARVO_REAL(calloc)(count, size);
}

void* realloc(void* old, std::size_t size) noexcept { return is_to_fail() ? nullptr : QUARVO_REAL(realloc)(old, size); }

void free(void* memory) noexcept { QUARVO_REAL(free)(memory); }

}  // extern "C"

void* operator new(std::size_t size) { return allocate_or_throw(size); }
void* operator new[](std::size_t size) { return allocate_or_throw(size); }
// As the library defines it, in whose place a sanitizer has one of its own.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return allocate_or_throw(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { QUARVO_REAL(free)(memory); }
void operator delete[](void* memory) noexcept { QUARVO_REAL(free)(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { QUARVO_REAL(free)(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { QUARVO_REAL(free)(memory); }
