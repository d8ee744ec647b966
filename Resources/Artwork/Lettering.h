/// The sizes and weights that the editor's texts come in.
#ifndef VARNO_RESOURCES_ARTWORK_LETTERING_H
#define VARNO_RESOURCES_ARTWORK_LETTERING_H

#include "Artwork/TextLine.h"

namespace varno::lettering {

/// The product's name.
inline constexpr TextStyle kProduct = {Weight::Bold, 19.0, 0.4};
/// What the product is, in one line.
inline constexpr TextStyle kMotto = {Weight::Medium, 9.0, 1.4};
/// Titles of sections.
inline constexpr TextStyle kTitle = {Weight::SemiBold, 8.5, 1.2};
/// Names of controls.
inline constexpr TextStyle kName = {Weight::Medium, 11.0, 0.1};
/// Values on scales.
inline constexpr TextStyle kValue = {Weight::Medium, 9.0, 0.0};
/// Numbers and words on keys.
inline constexpr TextStyle kKeyNumber = {Weight::SemiBold, 12.0, 0.0};
inline constexpr TextStyle kKeyText = {Weight::Medium, 11.0, 0.2};

/// From the middle of capitals down to their baseline, in pixels: half of their height.
constexpr double halfCapitals(const TextStyle& style) {
    constexpr double kCapitalHeight = 0.727;
    return style.mSize * kCapitalHeight / 2;
}

} // namespace varno::lettering

#endif
