#include "alignment-kernels.h"

#include <algorithm>

const alignment_kernel* find_alignment_kernel(const alignment_bound& bound) {
  const std::span<const alignment_kernel> all = alignment_kernels();
  const auto it =
      std::find_if(all.begin(), all.end(), [&bound](const alignment_kernel& kernel) { return kernel.bound == bound; });
  return it == all.end() ? nullptr : &*it;
}
