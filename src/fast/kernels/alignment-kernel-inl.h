// What the kernels share, once for each vector target: to be included after hwy/foreach_target.h.

#include <hwy/highway.h>

#include <cstring>

#include "bit-planes.h"
#include "place-kept.h"

#if defined(QUARVO_FAST_ALIGNMENT_KERNEL_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef QUARVO_FAST_ALIGNMENT_KERNEL_INL_H
#undef QUARVO_FAST_ALIGNMENT_KERNEL_INL_H
#else
#define QUARVO_FAST_ALIGNMENT_KERNEL_INL_H
#endif

HWY_BEFORE_NAMESPACE();
namespace quarvo_alignment_kernel {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The vectors of the target, but with the operators that compilers know: thousands of them in a row compile ten times
// as fast as calls of Highway's, and are joined to the operations with three operands of newer processors.
constexpr std::size_t lanes = hn::MaxLanes(hn::CappedTag<std::uint64_t, CBitPlanes::words>());
using vec = std::uint64_t __attribute__((vector_size(lanes * sizeof(std::uint64_t))));

// The lanes of one vector, and the symbols around them.
class CLanes {
 public:
  // Those from word `word` on of the plane vector of index t.
  CLanes(const CBitPlanes& planes, std::ptrdiff_t t, std::size_t word)
      : low(planes.low(t) + word), high(planes.high(t) + word), Ns(planes.Ns(t) + word) {}

  // Where the symbol at offset `a`, or an N there, matches the one at offset `b`.
  HWY_INLINE vec matches(std::ptrdiff_t a, std::ptrdiff_t b) const {
    return ~((load(low, a) ^ load(low, b)) | (load(high, a) ^ load(high, b))) | load(Ns, a);
  }

 private:
  const std::uint64_t* low;
  const std::uint64_t* high;
  const std::uint64_t* Ns;

  static HWY_INLINE vec load(const std::uint64_t* plane, std::ptrdiff_t offset) {
    vec loaded;
    std::memcpy(&loaded, plane + offset * static_cast<std::ptrdiff_t>(CBitPlanes::words), sizeof loaded);
    return loaded;
  }
};

// Kernel::kept(lanes) is the program.
template <typename Kernel>
void run_kernel(const CBitPlanes& planes, CPositionSet& kept) {
  std::uint64_t words[CBitPlanes::words];
  for (std::size_t t = 0; t < planes.stretch(); ++t) {
    for (std::size_t word = 0; word < planes.words_in_use(); word += lanes) {
      const vec found = Kernel::kept(CLanes(planes, static_cast<std::ptrdiff_t>(t), word));
      std::memcpy(words + word, &found, sizeof found);
    }
    place_kept(words, t, planes, kept);
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace quarvo_alignment_kernel
HWY_AFTER_NAMESPACE();

#endif
