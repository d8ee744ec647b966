/// The sample rates at which the effect works. Front ends hand this range to the host library.
#ifndef VARNO_SOURCE_DEMOGAIN_SAMPLERATES_H
#define VARNO_SOURCE_DEMOGAIN_SAMPLERATES_H

namespace DemoGain_SampleRates {

/// Below 14 kHz the detector's 7 kHz all-pass is unstable; 16 kHz is the next rate in use.
inline constexpr double kLowestHz = 16000.0;
/// The highest rate of audio devices.
inline constexpr double kHighestHz = 384000.0;

} // namespace DemoGain_SampleRates

#endif
