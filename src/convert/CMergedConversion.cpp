#include "CMergedConversion.h"

bool CMergedConversion::begin(std::FILE* out, const results_header& header) { return told(inner->begin(out, header)); }

bool CMergedConversion::begin_sequence(std::FILE* out, const results_sequence& sequence) {
  return pass(out) && told(inner->begin_sequence(out, sequence));
}

bool CMergedConversion::add(std::FILE* out, const results_repeat& repeat) {
  if (repeats != 0 && repeat.start > whole.end && !pass(out)) return false;
  if (++repeats == 1) {
    whole = best = repeat;
    return true;
  }
  if (repeat.score > best.score) best = repeat;
  if (repeat.end <= whole.end) return true;
  if (whole.sequence && repeat.sequence) {
    *whole.sequence += repeat.sequence->substr(static_cast<std::size_t>(whole.end - repeat.start + 1));
  }
  whole.right_flank = repeat.right_flank;
  whole.end = repeat.end;
  return true;
}

bool CMergedConversion::finish(std::FILE* out) { return pass(out) && told(inner->finish(out)); }

bool CMergedConversion::pass(std::FILE* out) {
  if (repeats == 0) return true;
  if (extends && repeats > 1) {
    best.start = whole.start;
    best.end = whole.end;
    best.span = whole.end - whole.start + 1;
    best.sequence = whole.sequence;
    best.left_flank = whole.left_flank;
    best.right_flank = whole.right_flank;
    best.edits.reset();
    best.alignment.reset();
  }
  repeats = 0;
  return told(inner->add(out, best));
}
