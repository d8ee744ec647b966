/// The routine's private state: constants, starting values, recovery.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_STATE_H
#define VARNO_SOURCE_ALG_DEMOGAIN_STATE_H

#include "DemoGain_Alg.h"

/// The two post sections, at every sample rate. Fixed by definition; they differ in their gain.
inline constexpr SDemoGain_PostSection kDemoGain_PostA = {0.21020785F,  0.4204157F,   0.21020785F,
                                                          -0.84083444F, 0.040730298F, 0.60940844F};
inline constexpr SDemoGain_PostSection kDemoGain_PostB = {kDemoGain_PostA.b0, kDemoGain_PostA.b1,
                                                          kDemoGain_PostA.b2, kDemoGain_PostA.a1,
                                                          kDemoGain_PostA.a2, 0.85306305F};

/// Fills `ioState` with its starting values at `sampleRate` (Hz, positive and finite): followers at 0 dB,
/// filters and delays at rest, clip gains at 1, level averages at 0.1, and every coefficient. Five words that
/// the routine does not read have no starting value and keep theirs: the last two of each group of mUnread,
/// and mUnwritten. Evaluated in double precision, each value rounded once. [any]
void DemoGain_ResetState(SDemoGain_Alg_State& ioState, double sampleRate);

/// Whether every word that the routine reads or writes is finite. [audio]
bool DemoGain_IsStateFinite(const SDemoGain_Alg_State& state);

/// Puts a state that has become non-finite back to its starting values. Finite coefficients are kept, because
/// only a reset writes them; the others become those of 48 kHz, because the routine does not know the sample
/// rate. [audio]
void DemoGain_RecoverState(SDemoGain_Alg_State& ioState);

#endif
