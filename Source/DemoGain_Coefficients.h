/// From parameter values to the numbers that the routine reads: pure functions, no state. Evaluated in double
/// precision and rounded once, except where single precision is named.
#ifndef VARNO_SOURCE_DEMOGAIN_COEFFICIENTS_H
#define VARNO_SOURCE_DEMOGAIN_COEFFICIENTS_H

#include "DemoGain_CurveLaw.h"

/// Normalized value (0 to 1) of "Gain" or "Volume" in dB: -20 to +20, 0 at 0.5. Single precision. [any]
float DemoGain_LevelDB(float normalized);

/// Linear factor of a level in dB: 10^(dB / 20). [any]
float DemoGain_LevelLin(float dB);

/// Normalized values, 0 to 1, of the parameters behind the time constants and the gain curve.
struct SDemoGain_DynamicsValues {
    float mAttack;  ///< "Atk"
    float mRelease; ///< "Rls"
    float mUK;      ///< "UK", a switch.
    float mRatio;   ///< "Ratio", chooses one of eight curves.
};

/// Follower coefficients (per sample) and gain curve.
struct SDemoGain_Dynamics {
    float mAttackCoef;
    float mReleaseCoef;
    float mSlowCoef;
    float mThreshold; ///< Start of the knee, dB; always -30.
    float mCurve[4];  ///< Coefficients of u^0 to u^3.
};

/// The curve that a normalized "Ratio" chooses: (ratio * 7 + 0.5) truncated, 0 to 7; 0 for what lies outside.
/// Single precision. [any]
int DemoGain_CurveIndex(float ratio);

/// The curve whose attack coefficient is the same at every sample rate; intended.
inline constexpr int kDemoGain_FixedAttackCurve = 7;

/// Time constants and curve at `sampleRate` (Hz, positive and finite). [any]
SDemoGain_Dynamics DemoGain_ComputeDynamics(const SDemoGain_DynamicsValues& values, double sampleRate);

/// The curve of DemoGain_ComputeDynamics, which no sample rate changes. [any]
DemoGain::GainCurve DemoGain_ComputeCurve(const SDemoGain_DynamicsValues& values);

/// Time constants of the two adjustable followers, in milliseconds: after one of them, 37 % of a change
/// remains.
struct SDemoGain_Times {
    double mAttackMs;
    double mReleaseMs;
};

/// The times that belong to the coefficients of DemoGain_ComputeDynamics, before these are rounded to single
/// precision. [any]
SDemoGain_Times DemoGain_ComputeTimes(const SDemoGain_DynamicsValues& values, double sampleRate);

#endif
