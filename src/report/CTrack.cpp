#include "CTrack.h"

#include <algorithm>

void CTrack::add(int start, int first_new, int end, std::size_t most_bins) {
  const auto bins_needed = [this, end] { return static_cast<std::size_t>((end - 1) / bin_width) + 1; };
  while (bins_needed() > most_bins) widen();
  if (bins_needed() > all.size()) all.resize(bins_needed());
  ++bin_at(start).starts;
  for (std::int64_t position = first_new; position <= end;) {
    bin& here = bin_at(static_cast<int>(position));
    const std::int64_t next = std::min<std::int64_t>(((position - 1) / bin_width + 1) * bin_width, end) + 1;
    here.covered += static_cast<std::uint32_t>(next - position);
    position = next;
  }
}

void CTrack::coarsen(std::size_t most_bins) {
  while (all.size() > most_bins) widen();
}

void CTrack::widen() {
  bin_width *= 2;
  const std::size_t halved = (all.size() + 1) / 2;
  for (std::size_t i = 0; i < halved; ++i) {
    bin merged = all[2 * i];
    if (2 * i + 1 < all.size()) {
      merged.starts += all[2 * i + 1].starts;
      merged.covered += all[2 * i + 1].covered;
    }
    all[i] = merged;
  }
  all.resize(halved);
}
