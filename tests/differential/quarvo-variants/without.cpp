// The program without one of its shortcuts, the member of shortcut_switches that QUARVO_WITHOUT names.

#include "CFastShortcuts.h"
#include "quarvo-run.h"

int main(int argc, char** argv) {
  shortcut_switches switches;
  switches.QUARVO_WITHOUT = false;
  CFastShortcuts shortcuts(switches);
  return run_quarvo(argc, argv, &shortcuts);
}
