#ifndef QUARVO_QUARVO_VERSION_H
#define QUARVO_QUARVO_VERSION_H

// The version of all programs.
inline constexpr const char* quarvo_version = "3.3.10";

#endif
