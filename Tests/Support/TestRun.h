/// How a run of the tests is made: its amount of work, its random cases, its sanitizers.
#ifndef VARNO_TESTS_SUPPORT_TESTRUN_H
#define VARNO_TESTS_SUPPORT_TESTRUN_H

#include <cstdlib>

namespace varno::test {

/// The environment's VARNO_TEST_SCALE, a whole number: tests over many random cases take that many times
/// their usual number. 1 where it is not set or not a positive number.
inline int testScale() {
    const char* text = std::getenv("VARNO_TEST_SCALE");
    const int scale = text != nullptr ? std::atoi(text) : 1;
    return scale > 0 ? scale : 1;
}

/// Fixes the seed of properties that are checked with random cases. RapidCheck reads its configuration from
/// the environment when the first property is checked, and prints it. RC_PARAMS="seed=..." gives other cases.
inline const bool kPropertySeedIsFixed = setenv("RC_PARAMS", "seed=20250317", 0) == 0;

/// Whether the program was built with a sanitizer that slows it down and takes memory.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool kIsSanitized = true;
#else
inline constexpr bool kIsSanitized = false;
#endif
#else
inline constexpr bool kIsSanitized = false;
#endif

} // namespace varno::test

#endif
