#pragma once

// In front of a loop over a few vectors whose number is known: written out in full, so that the vectors are held in
// registers. At -O2 compilers do not do this by themselves.
#ifdef __clang__
#define QUARVO_UNROLL _Pragma("clang loop unroll(full)")
#else
#define QUARVO_UNROLL _Pragma("GCC unroll 16")
#endif
