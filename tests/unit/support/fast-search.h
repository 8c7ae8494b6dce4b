#pragma once

#include <utility>

#include "CFastShortcuts.h"
#include "CSearchController.h"

// The search of a record with shortcuts, by the parameters in force.
class CFastSearch {
 private:
  search_settings settings = (CSearchController::make_minimum_arrays(), current_search_settings());
  CFastShortcuts shortcuts;
  search_workspace workspace{sat_alloc, &shortcuts};

 public:
  CSearchController controller;

  explicit CFastSearch(CSequence_Mol& record, const shortcut_switches& switches = {}, unsigned number = 1,
                       search_progress progress = {})
      : shortcuts(switches), controller(number, record, settings, workspace, std::move(progress)) {
    shortcuts.begin_record(record.symbols.buffer, record.symbols.buffer + record.symbols.length, settings);
  }
};
