// The page of the tests.

#include "report-template.h"

std::string_view report_template() { return "<page>@DATA@</page>\n"; }
