/// The conversions that the signal path is built on. Each is defined to the bit: single precision, operations
/// in the written order. None reads outside its table or loops without bound, whatever it is given.
#ifndef DEMOGAIN_CONVERSIONS_H
#define DEMOGAIN_CONVERSIONS_H

#include "DemoGain_Tables.h"

#include <cmath>

namespace DemoGain {

/// One fold of a level beyond the tables: two octaves in level, counted as 12 dB sharp although they
/// are 12.04.
inline constexpr float kFoldLin = 0.25F;
inline constexpr float kFoldDB = 12.0F;
/// Enough folds for any finite level (62 bring the largest float below the ceiling), and enough for a gain:
/// the 64th leaves the factor 0.
inline constexpr int kMaxFolds = 64;

/// Linear interpolation at `position` in a table, 0 to kDemoGain_TableIntervals, added to `offset`.
inline float interpolate(const float* table, float position, float offset) {
    const int entry = static_cast<int>(position);
    const float fraction = position - static_cast<float>(entry);
    return (offset + table[entry]) + (table[entry + 1] - table[entry]) * fraction;
}

/// Level (linear, 0 or more) in dB, -80 at least.
inline float LinToDb(float level) {
    float foldedDB = 0.0F;
    for (int fold = 0; fold < kMaxFolds && level > fCeilLin; ++fold) {
        foldedDB += kFoldDB;
        level *= kFoldLin;
    }
    if (level < fFloorLin) {
        return foldedDB + fFloorDB;
    }
    if (level < fCeilLin) {
        return interpolate(kLinTodB, (level - fFloorLin) * kLinTodBDivide, foldedDB);
    }
    return foldedDB + fCeilDB;
}

/// Gain in dB as a factor, 0.0001 at least. A gain above +24 dB folds downwards: its factor shrinks. The gain
/// reduction converted here never comes that high.
inline float DbToLin(float gainDB) {
    float folded = 1.0F;
    for (int fold = 0; fold < kMaxFolds && gainDB > fCeilDB; ++fold) {
        gainDB -= kFoldDB;
        folded *= kFoldLin;
    }
    if (gainDB < fFloorDB) {
        return folded * fFloorLin;
    }
    if (gainDB < fCeilDB) {
        return folded * interpolate(kdBToLin, (gainDB - fFloorDB) * kdBToLinDivide, 0.0F);
    }
    return folded * fCeilLin;
}

/// Half of |v| near zero, as an even polynomial: (-1.9086499 s^2 + 4.5072875 s - 3.7919977) s^2 + 1.6720511 s
/// with s = v^2.
inline float halfLevelPolynomial(float v) {
    const float s = v * v;
    const float s2 = s * s;
    return (-1.9086499F * s2 + 4.5072875F * s - 3.7919977F) * s2 + 1.6720511F * s;
}

/// Level of a sample: |v| above 1, a rounded |v| below. It steps from 0.957 to 1 where they meet; intended.
inline float Level(float v) {
    const float magnitude = std::fabs(v);
    const float rounded = 2.0F * halfLevelPolynomial(v);
    return magnitude > 1.0F ? magnitude : rounded;
}

/// Level that decides the clip gain. The bias shifts what counts as above 1, but not the rounded part; at 0
/// that is 0.03124788.
inline float ClipLevel(float v, float bias) {
    const float magnitude = std::fabs(bias + v);
    const float rounded = 2.0F * (halfLevelPolynomial(v) + 0.015623941F);
    return magnitude > 1.0F ? magnitude : rounded;
}

} // namespace DemoGain

#endif
