#pragma once

// The version of all programs.
inline constexpr const char* quarvo_version = "3.3.10";
