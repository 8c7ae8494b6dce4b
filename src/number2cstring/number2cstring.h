#pragma once

// Numbers as text in one static buffer: use or copy the result before the next call.
const char* number2str(float value);     // as "%g"
const char* number2str(double value);    // as "%g"
const char* number2str(unsigned value);  // decimal
const char* number2str(int value);       // decimal
