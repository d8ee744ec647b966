/// Starting values of the routine's private state.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_STATE_H
#define VARNO_SOURCE_ALG_DEMOGAIN_STATE_H

#include "DemoGain_Alg.h"

/// Fills `ioState` with its starting values at `sampleRate` (Hz, positive and finite): followers at 0 dB,
/// filters and delays at rest, clip gains at 1, level averages at 0.1, and every coefficient. The five words
/// that no routine reads and no rule gives a value (the last two of each group of mUnread, and mUnwritten)
/// are left as they are. Evaluated in double precision, each value rounded once. [any]
void DemoGain_ResetState(SDemoGain_Alg_State& ioState, double sampleRate);

/// Whether every word that the routine reads or writes is finite. [audio]
bool DemoGain_IsStateFinite(const SDemoGain_Alg_State& state);

/// Puts a state that has become non-finite back to its starting values: everything that runs is at rest
/// again; coefficients are kept, since nothing but a reset writes them, but for those that are not finite
/// themselves: they become those of 48 kHz, because the routine does not know the rate. [audio]
void DemoGain_RecoverState(SDemoGain_Alg_State& ioState);

#endif
