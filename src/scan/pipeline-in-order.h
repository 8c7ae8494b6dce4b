#pragma once

#include <tbb/parallel_pipeline.h>

#include <cstddef>
#include <memory>

// Takes items from next() until it gives none, has work(item) done by all threads at once, and hands the items to
// finish(item) in the order in which they came; each of next() and finish() by one thread at a time. No more than
// `most` items are on their way.
template <typename Item, typename Next, typename Work, typename Finish>
void run_in_order(std::size_t most, const Next& next, const Work& work, const Finish& finish) {
  using pointer = std::shared_ptr<Item>;
  const auto first = [&](tbb::flow_control& flow) {
    pointer item = next();
    if (item == nullptr) flow.stop();
    return item;
  };
  const auto middle = [&](pointer item) {
    work(*item);
    return item;
  };
  const auto last = [&](const pointer& item) { finish(*item); };
  tbb::parallel_pipeline(most, tbb::make_filter<void, pointer>(tbb::filter_mode::serial_in_order, first) &
                                   tbb::make_filter<pointer, pointer>(tbb::filter_mode::parallel, middle) &
                                   tbb::make_filter<pointer, void>(tbb::filter_mode::serial_in_order, last));
}
