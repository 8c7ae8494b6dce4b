#pragma once

// Whether the address sanitizer looks on.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool has_address_sanitizer = true;
#elif defined(__has_feature)
inline constexpr bool has_address_sanitizer = __has_feature(address_sanitizer);
#else
inline constexpr bool has_address_sanitizer = false;
#endif

// How much of many random cases is tried, of a number of rounds, of symbols, or of findings that must come of them. The
// builds by g++ without a sanitizer hold the property to all of them. Memory that is misused is so in a quarter of them
// too, and so is code that clang understands otherwise; its emulated vectors are slow besides.
template <typename Number>
constexpr Number tried(Number cases) {
#if defined(__clang__)
  return cases / 4;
#else
  return has_address_sanitizer ? cases / 4 : cases;
#endif
}
