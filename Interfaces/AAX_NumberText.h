/// The number that a text stands for, the same with every standard library and in every locale.
#ifndef VARNO_INTERFACES_AAX_NUMBERTEXT_H
#define VARNO_INTERFACES_AAX_NUMBERTEXT_H

#include <string_view>

// Which characters belong to a number is each reader's own rule; what they stand for is here. Streams differ
// between standard libraries, not all of them have std::from_chars for floating point, and std::strtod
// follows the locale of the process, which is the host's. The C library of Windows has no locale_t, but the
// standard library there has std::from_chars.
#if defined(_WIN32)
#include "AAX_NumberFromChars.h"
#else
#include <clocale>
#include <cstdlib>
#include <string>
#ifdef __APPLE__
#include <xlocale.h>
#endif

/// The locale of the language C; lives as long as the module. [any]
inline locale_t AAX_CLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", locale_t());
    return locale;
}
#endif

/// The double nearest to `number`, which strtod reads in full in the locale of the language C: infinity for
/// what is too large, zero for what is too small. [any]
inline double AAX_NearestDouble(std::string_view number) {
#if defined(_WIN32)
    return AAX_NumberFromChars<double>(number);
#else
    return strtod_l(std::string(number).c_str(), nullptr, AAX_CLocale());
#endif
}

/// The float nearest to `number`, rounded once; otherwise as AAX_NearestDouble. [any]
inline float AAX_NearestFloat(std::string_view number) {
#if defined(_WIN32)
    return AAX_NumberFromChars<float>(number);
#else
    return strtof_l(std::string(number).c_str(), nullptr, AAX_CLocale());
#endif
}

#endif
