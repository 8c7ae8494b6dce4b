// The program with the vector code that every processor has.

#include <hwy/highway.h>
#include <hwy/targets.h>

#include "quarvo-run.h"

int main(int argc, char** argv) {
  hwy::SetSupportedTargetsForTest(hwy::SupportedAndGeneratedTargets().back());
  return run_quarvo(argc, argv);
}
