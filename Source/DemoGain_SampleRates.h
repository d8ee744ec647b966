/// Sample rates in Hz: the one that the effect is defined at, and those at which it works.
#ifndef VARNO_SOURCE_DEMOGAIN_SAMPLERATES_H
#define VARNO_SOURCE_DEMOGAIN_SAMPLERATES_H

namespace DemoGain_SampleRates {

/// The rate for which all time constants of the effect are stated, except the DC blocker's.
inline constexpr double kReferenceHz = 48000.0;

/// Front ends pass this range to the host library.
/// Below 14 kHz the detector's 7 kHz all-pass is unstable; 16 kHz is the next rate in use.
inline constexpr double kLowestHz = 16000.0;
/// The highest rate of audio devices.
inline constexpr double kHighestHz = 384000.0;

} // namespace DemoGain_SampleRates

#endif
