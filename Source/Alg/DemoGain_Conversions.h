/// The conversions that the signal path is built on. Each is defined to the bit: single precision, operations
/// in the written order. None reads outside its table or loops without bound, whatever it is given.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_CONVERSIONS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_CONVERSIONS_H

#include "Alg/DemoGain_Tables.h"

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

} // namespace DemoGain

#endif
