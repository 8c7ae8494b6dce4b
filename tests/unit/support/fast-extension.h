#pragma once

#include "CFastShortcuts.h"
#include "Csat.h"
#include "extension.h"
#include "search-settings.h"

// The extension with shortcuts, as the parameters say, to be compared with the one that CSearchController defines.
class CFastExtension {
 public:
  CFastExtension(const char* its_begin, const char* its_end) : begin(its_begin), end(its_end) {
    settings.rules = current_scoring();
    shortcuts.begin_record(begin, end, settings);
  }

  void to_the_right(Csat& sat) {
    unit.set(sat.unit_begin, sat.unit_end);
    extend_right(sat, settings.rules, unit, end, shortcuts);
  }
  void to_the_left(Csat& sat) {
    unit.set(sat.unit_begin, sat.unit_end);
    extend_left(sat, settings.rules, unit, begin, shortcuts);
  }

 private:
  const char* begin;
  const char* end;
  search_settings settings;
  CFastShortcuts shortcuts;
  CUnitText unit;
};
