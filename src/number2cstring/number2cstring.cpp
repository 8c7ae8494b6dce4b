#include "number2cstring.h"

#include <cstdio>

static char number[50];

const char* number2str(float value) { return number2str(static_cast<double>(value)); }

const char* number2str(double value) {
  std::snprintf(number, sizeof number, "%lg", value);
  return number;
}

const char* number2str(unsigned value) {
  std::snprintf(number, sizeof number, "%u", value);
  return number;
}

const char* number2str(int value) {
  std::snprintf(number, sizeof number, "%d", value);
  return number;
}
