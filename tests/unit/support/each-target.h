#pragma once

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

// Runs `check` once with the vector code of each kind that is built in and that this processor has.
template <typename Check>
void on_each_target(Check check) {
  const auto targets = hwy::SupportedAndGeneratedTargets();
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
