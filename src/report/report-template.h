#pragma once

#include <string_view>

// The page as web/build.mjs bundles it, linked into the program: everything but the data, for which @DATA@ stands.
std::string_view report_template();
