/// Lanes: the samples that the routine computes side by side.
///
/// A recursion has to wait for the result of its last frame, so its time per frame is the same for one sample
/// and for as many as a vector holds. The channels of an instance therefore share vectors, and so do those of
/// several instances, where the host passes instances that allow it (see DemoGain_Neighbours.h). They form a
/// group. A lane is one channel of one instance of a group; the lanes of a stereo pair are left and right of
/// the first instance, then left and right of the second. No lane is combined with another one, but for the
/// stereo link, which combines the channels of an instance. So an instance has the same bits alone and in any
/// group.
///
/// A row of samples holds frame after frame, with the lanes of a frame side by side. Vectors over time hold
/// several frames; what differs from lane to lane, such as the settings, is repeated to fill such a vector
/// (LaneValues).
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_LANES_H
#define VARNO_SOURCE_ALG_DEMOGAIN_LANES_H

#include "DemoGain_Alg.h"

#include <cstddef>

namespace DemoGain {

/// Most samples of a vector that runs over time. Rows of two lanes then take two vectors or more, and the
/// processor overlaps their long chains of dependent operations; one vector of 16 samples was slower than two
/// of 8.
inline constexpr std::size_t kMostSamples = 8;
/// Most lanes: two frames of them fill such a vector.
inline constexpr std::size_t kMostLanes = 4;

/// One value for each lane, repeated up to kMostSamples.
struct alignas(kMostSamples * sizeof(float)) LaneValues {
    float v[kMostSamples];
};

/// What the instances of a group keep from buffer to buffer: borrowed, one of each per instance.
template<std::size_t kInstances, std::size_t kChannels>
struct Group {
    static constexpr std::size_t kLanes = kInstances * kChannels;
    static_assert(kLanes == 1 || kLanes == 2 || kLanes == kMostLanes);

    SDemoGain_Alg_State* mStates[kInstances];
    float* mTaps[kInstances]; ///< The first of eMeterTap_Count taps each.

    /// The state of a lane's instance.
    SDemoGain_Alg_State& stateOf(std::size_t lane) const { return *mStates[lane / kChannels]; }
    /// The channel of a lane in its instance.
    static constexpr std::size_t channelOf(std::size_t lane) { return lane % kChannels; }
};

} // namespace DemoGain

#endif
