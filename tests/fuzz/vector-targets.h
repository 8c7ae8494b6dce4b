// Every kind of vector code that is built in and that this processor has.
#pragma once

#include <hwy/highway.h>
#include <hwy/targets.h>

#include <cstdint>

inline void use_vector_target(std::int64_t target) {
  hwy::SetSupportedTargetsForTest(target);
  hwy::GetChosenTarget().Update(target);
}

// What the processor offers, as in a run.
inline void use_all_vector_targets() {
  hwy::SetSupportedTargetsForTest(0);
  hwy::GetChosenTarget().DeInit();
}

// The kind that every processor has.
inline void use_plainest_vector_target() { use_vector_target(hwy::SupportedAndGeneratedTargets().back()); }

// Calls check(name) with each kind in force, the one that the program would choose first.
template <typename Check>
void on_each_vector_target(Check check) {
  for (const auto target : hwy::SupportedAndGeneratedTargets()) {
    use_vector_target(target);
    check(hwy::TargetName(target));
  }
  use_all_vector_targets();
}
