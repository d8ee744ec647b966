/// The two conversion tables of the signal path and their constants. Constant data, shared by all instances.
/// Entries are made at build time by DemoGain_TablesGenerator: formula in double precision, rounded once.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_TABLES_H
#define VARNO_SOURCE_ALG_DEMOGAIN_TABLES_H

/// Lowest level of the tables, linear: -80 dB.
inline constexpr float fFloorLin = 0.0001F;
/// Highest level of the tables, linear: +24 dB.
inline constexpr float fCeilLin = 15.848933F;
/// The same levels in dB.
inline constexpr float fFloorDB = -80.0F;
inline constexpr float fCeilDB = 24.0F;

/// Intervals between the lowest and the highest level; entry kDemoGain_TableIntervals is the highest level.
inline constexpr int kDemoGain_TableIntervals = 9999;
/// Entries of each table. The last one repeats the one before it: interpolation at the top reads it.
inline constexpr int kDemoGain_TableEntries = kDemoGain_TableIntervals + 2;

/// Linear step between entries of kLinTodB: (fCeilLin - fFloorLin) / 9999.
inline constexpr float kfLinTodBStep = 0.0015850418F;
/// Entries of kLinTodB per unit of linear level: 9999 / (fCeilLin - fFloorLin).
inline constexpr float kLinTodBDivide = 630.8982F;
/// Entries of kdBToLin per dB: 9999 / 104, to eight digits.
inline constexpr float kdBToLinDivide = 96.144226F;

/// Linear level to dB: entry i is 20*log10(0.0001 + i*kfLinTodBStep); entries 9999 and 10000 are 24.
extern const float kLinTodB[kDemoGain_TableEntries];
/// dB to linear level: entry i is 10^((-80 + i*104/9999) / 20); entry 10000 repeats entry 9999.
extern const float kdBToLin[kDemoGain_TableEntries];

#endif
