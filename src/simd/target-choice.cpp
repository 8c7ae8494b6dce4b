// Which of the kinds of vector code this processor runs, told to Highway: what its library is needed for, and all that
// it is. Loading the shared library costs as much time as all else before the first symbol, since it measures the clock
// of the processor for purposes of its own; so programs that ask for no more define it here and take the headers alone.
// cmake/highway.cmake says where.
#ifdef QUARVO_CHOOSES_TARGET

#include <cpuid.h>
#include <hwy/base.h>
#include <hwy/targets.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

// Set by tests in place of what the processor has.
std::int64_t targets_for_test = 0;
std::int64_t disabled_targets = 0;

// Features that compilers do not all have names for. The registers that they use belong to AVX2, so that the system
// saves them is known from there.
bool has_f16c_and_lzcnt() {
  constexpr unsigned f16c = 1U << 29;
  constexpr unsigned lzcnt = 1U << 5;
  unsigned a = 0;
  unsigned b = 0;
  unsigned c = 0;
  unsigned d = 0;
  if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & f16c) == 0) return false;
  return __get_cpuid(0x80000001U, &a, &b, &c, &d) != 0 && (c & lzcnt) != 0;
}

// Each kind has what the one before has. None is reported beyond AVX3, which is the last that Highway compiles unasked.
std::int64_t targets_of_processor() {
  std::int64_t targets = HWY_ENABLED_BASELINE | HWY_EMU128 | HWY_SCALAR;
  __builtin_cpu_init();
  if (!__builtin_cpu_supports("ssse3")) return targets;
  targets |= HWY_SSSE3;
  if (!__builtin_cpu_supports("sse4.1") || !__builtin_cpu_supports("sse4.2") || !__builtin_cpu_supports("aes") ||
      !__builtin_cpu_supports("pclmul")) {
    return targets;
  }
  targets |= HWY_SSE4;
  if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma") || !__builtin_cpu_supports("bmi") ||
      !__builtin_cpu_supports("bmi2") || !has_f16c_and_lzcnt()) {
    return targets;
  }
  targets |= HWY_AVX2;
  if (!__builtin_cpu_supports("avx512f") || !__builtin_cpu_supports("avx512vl") ||
      !__builtin_cpu_supports("avx512dq") || !__builtin_cpu_supports("avx512bw") ||
      !__builtin_cpu_supports("avx512cd")) {
    return targets;
  }
  return targets | HWY_AVX3;
}

}  // namespace

namespace hwy {

std::int64_t SupportedTargets() {
  static const std::int64_t of_processor = targets_of_processor();
  const std::int64_t targets = (targets_for_test != 0 ? targets_for_test : of_processor) & ~disabled_targets;
  return targets != 0 ? targets : HWY_STATIC_TARGET;
}

void SetSupportedTargetsForTest(std::int64_t targets) {
  targets_for_test = targets;
  GetChosenTarget().DeInit();
}

void DisableTargets(std::int64_t targets) {
  disabled_targets = targets;
  GetChosenTarget().DeInit();
}

ChosenTarget& GetChosenTarget() {
  static ChosenTarget chosen;
  return chosen;
}

void Abort(const char* file, int line, const char* format, ...) {
  std::fprintf(stderr, "%s:%d: ", file, line);
  std::va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
  std::fputc('\n', stderr);
  std::abort();
}

}  // namespace hwy

#endif
