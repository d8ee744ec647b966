#include "Artwork/Palette.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

// A component of sRGB as an amount of light.
double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

} // namespace

double luminance(Color color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

double contrast(Color a, Color b) {
    // Light that a screen reflects even where it is black.
    constexpr double kFlare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + kFlare) / (darker + kFlare);
}

} // namespace varno
