#pragma once

#include <functional>

#include "CsatContainer.h"
#include "unit-text.h"

class CShortcuts;

// What a search tells while it is under way; either may be empty.
struct search_progress {
  std::function<void(unsigned unit_length)> unit_length;  // again and again
  std::function<void(const char* text)> step;             // at the beginning of a step, with a line for the user
};

// What searches that follow each other share: memory, and how they are sped up. Not for two searches at once.
struct search_workspace {
  Csat_garbagecollector& pool;      // where the records of repeats come from and go to
  CShortcuts* shortcuts = nullptr;  // none: the plain search
  CUnitText unit{};
};
