// The program as it is defined, without any shortcut.

#include "quarvo-run.h"

int main(int argc, char** argv) { return run_quarvo(argc, argv); }
