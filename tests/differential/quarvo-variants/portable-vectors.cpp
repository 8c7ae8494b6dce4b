// The program with the vector code that every processor has.

#include <hwy/highway.h>
#include <hwy/targets.h>

#include "CFastShortcuts.h"
#include "quarvo-run.h"

int main(int argc, char** argv) {
  hwy::SetSupportedTargetsForTest(hwy::SupportedAndGeneratedTargets().back());
  CFastShortcuts shortcuts;
  return run_quarvo(argc, argv, &shortcuts);
}
