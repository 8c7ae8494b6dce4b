#pragma once

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

#include <vector>

#include "sanitizers.h"

// The kinds of vector code that are tested: those that are built in and that this processor has, one on arm64, several
// on x86-64. Under the address sanitizer emulated vectors take most of the time of all tests; only the differential
// tests run them there.
inline auto tested_targets() {
  auto targets = hwy::SupportedAndGeneratedTargets();
  const auto is_emulated = [](auto target) { return target == HWY_EMU128 || target == HWY_SCALAR; };
  if (has_address_sanitizer && targets.size() > 1) std::erase_if(targets, is_emulated);
  return targets;
}

// Runs `check` once with each of them.
template <typename Check>
void on_each_target(Check check) {
  const auto targets = tested_targets();
  ASSERT_FALSE(targets.empty());
  for (const auto target : targets) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    hwy::GetChosenTarget().Update(target);
    check();
  }
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().DeInit();
}
