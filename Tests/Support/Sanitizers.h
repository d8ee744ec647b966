/// Whether this program was built with a sanitizer.
#ifndef VARNO_TESTS_SUPPORT_SANITIZERS_H
#define VARNO_TESTS_SUPPORT_SANITIZERS_H

namespace varno::test {

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
