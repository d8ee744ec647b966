/// The sizes of a window, relative to the plain size on its desktop. Pure functions.
#ifndef VARNO_SURROUND_SIZESTEPS_H
#define VARNO_SURROUND_SIZESTEPS_H

#include "Surround/Settings/UserPreferences.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>

namespace varno::SizeSteps {

inline constexpr double kPlain = 1.0;

/// The size above or below one of kWindowSizes; at the ends, the same. @param direction 1 or -1 [any]
inline double next(double size, int direction) {
    const auto place = std::ranges::find(kWindowSizes, size) - kWindowSizes.begin() + direction;
    return kWindowSizes.at(static_cast<std::size_t>(
        std::clamp(place, std::ptrdiff_t{0}, static_cast<std::ptrdiff_t>(kWindowSizes.size()) - 1)));
}

/// "125 %". [any]
inline std::string text(double size) {
    constexpr double kHundred = 100.0;
    return std::to_string(std::lround(size * kHundred)) + " %";
}

/// The largest size up to `wanted` at which something fits into a room; the smallest one where none does.
/// @param width, height of it at the plain size, in pixels [any]
inline double fitting(double wanted, double width, double height, double roomWidth, double roomHeight) {
    double chosen = kWindowSizes.front();
    for (const double size : kWindowSizes) {
        if (size <= wanted && width * size <= roomWidth && height * size <= roomHeight) {
            chosen = size;
        }
    }
    return chosen;
}

} // namespace varno::SizeSteps

#endif
