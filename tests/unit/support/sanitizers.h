#pragma once

// Whether the address sanitizer looks on.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool has_address_sanitizer = true;
#elif defined(__has_feature)
inline constexpr bool has_address_sanitizer = __has_feature(address_sanitizer);
#else
inline constexpr bool has_address_sanitizer = false;
#endif
