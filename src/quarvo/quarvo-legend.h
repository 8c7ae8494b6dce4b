#pragma once

#include <cstdio>

// Writes the legend of columns (each line after the prefix) or the table header that belongs to the output format.
void print_output_format(std::FILE* out, const char* prefix);
