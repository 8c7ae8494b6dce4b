#pragma once

// To be included in front of Highway. The kernels are large, and bit operations are the same on all targets of one
// vector size, so each size is compiled once.
#include <hwy/detect_targets.h>

#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_SSSE3 | HWY_SSE4 | HWY_AVX3_DL)
