// The program with every candidate of imperfect mode tried.

#include "candidate-filter.h"
#include "quarvo-run.h"

int main(int argc, char** argv) {
  CCandidateFilter::tests_enabled = false;
  return run_quarvo(argc, argv);
}
