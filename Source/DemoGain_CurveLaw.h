/// The gain reduction curve: from the detector's level to a gain. Single precision, in the order of
/// operations that is written; the routine computes the same for several samples at once.
#ifndef VARNO_SOURCE_DEMOGAIN_CURVELAW_H
#define VARNO_SOURCE_DEMOGAIN_CURVELAW_H

namespace DemoGain {

/// Width of the knee in dB.
inline constexpr float kKneeDB = 45.0F;
inline constexpr float kPerKnee = 1.0F / kKneeDB;
/// Gain reduction below the knee in dB. Within the first part of the knee most curves amplify by some tenths
/// of a dB: their polynomials are positive there.
inline constexpr float kLeastReductionDB = 0.000001F;
/// Each follows the curve, and their sum is the reduction: a steady level is reduced by as many times what
/// the curve yields.
inline constexpr float kFollowers = 2.0F;

/// The soft-knee curve from level to gain, both in dB.
struct GainCurve {
    float mThreshold; ///< Start of the knee, dB.
    float mTop;       ///< End of the knee, dB.
    float mC[4];      ///< Coefficients of u^0 to u^3; u = t^2, t runs from 0 to 1 across the knee.
    float mTopGain;   ///< Gain above the knee, dB.

    /// The curve of a threshold in dB and the four coefficients. [any]
    static constexpr GainCurve of(float threshold, float c0, float c1, float c2, float c3) {
        GainCurve curve{threshold, threshold + kKneeDB, {c0, c1, c2, c3}, 0.0F};
        curve.mTopGain = curve.knee(curve.mTop);
        return curve;
    }

    /// Gain in dB within the knee, at a level in dB. [any]
    constexpr float knee(float level) const {
        const float t = (level - mThreshold) * kPerKnee;
        const float u = t * t;
        return (((mC[3] * u + mC[2]) * u + mC[1]) * u + mC[0]) * (t * -kKneeDB) - kLeastReductionDB;
    }

    /// Gain in dB at any level in dB: what one follower approaches. [any]
    constexpr float gain(float level) const {
        if (level > mTop) {
            return mTopGain;
        }
        return level > mThreshold ? knee(level) : -kLeastReductionDB;
    }

    /// The level in dB that becomes of a level in dB which lasts: both followers have settled. Levels are
    /// those of the detector, behind "Gain"; what clips and shapes follows and is not included. [any]
    constexpr float settledLevel(float level) const { return level + kFollowers * gain(level); }
};

} // namespace DemoGain

#endif
