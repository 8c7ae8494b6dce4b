// The kinds of vector code that Highway is told of, compared with what the system says of the processor.

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

#ifdef __x86_64__

std::vector<std::string> processor_flags() {
  std::ifstream file("/proc/cpuinfo");
  std::vector<std::string> flags;
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, 5, "flags") != 0) continue;
    std::istringstream words(line);
    for (std::string word; words >> word;) flags.push_back(word);
    break;
  }
  return flags;
}

TEST(TargetChoice, TellsWhatTheProcessorHas) {
  const std::vector<std::string> flags = processor_flags();
  if (flags.empty()) GTEST_SKIP() << "the system does not tell";
  const auto has_all = [&](const std::vector<std::string>& wanted) {
    return std::all_of(wanted.begin(), wanted.end(),
                       [&](const std::string& f) { return std::find(flags.begin(), flags.end(), f) != flags.end(); });
  };
  const auto is_told = [](std::int64_t target) { return (hwy::SupportedTargets() & target) != 0; };
  const bool has_sse4 = has_all({"ssse3", "sse4_1", "sse4_2", "aes", "pclmulqdq"});
  const bool has_avx2 = has_sse4 && has_all({"avx2", "fma", "bmi1", "bmi2", "f16c", "abm"});
  EXPECT_EQ(is_told(HWY_SSSE3), has_all({"ssse3"}));
  EXPECT_EQ(is_told(HWY_SSE4), has_sse4);
  EXPECT_EQ(is_told(HWY_AVX2), has_avx2);
  EXPECT_EQ(is_told(HWY_AVX3), has_avx2 && has_all({"avx512f", "avx512vl", "avx512dq", "avx512bw", "avx512cd"}));
}

#endif

TEST(TargetChoice, AlwaysLeavesOne) {
  EXPECT_FALSE(hwy::SupportedAndGeneratedTargets().empty());
  hwy::DisableTargets(~std::int64_t{0});
  EXPECT_NE(hwy::SupportedTargets(), 0);
  hwy::DisableTargets(0);
  EXPECT_FALSE(hwy::SupportedAndGeneratedTargets().empty());
}

}  // namespace
