#include "Alg/DemoGain_Neighbours.h"

#include "Alg/DemoGain_Lanes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>

namespace {

// Addresses from mBegin to before mEnd.
struct MemoryRange {
    std::uintptr_t mBegin;
    std::uintptr_t mEnd;
};

MemoryRange rangeOf(const void* first, std::size_t bytes) {
    const auto begin = reinterpret_cast<std::uintptr_t>(first);
    return {begin, begin + bytes};
}

bool overlap(const MemoryRange& left, const MemoryRange& right) {
    return left.mBegin < right.mEnd && right.mBegin < left.mEnd;
}

constexpr std::size_t kMostChannels = 2;

// What an instance reads besides its audio: its context and what most of its fields point to.
constexpr std::size_t kRecords = 21;
using Records = std::array<MemoryRange, kRecords>;

Records recordsOf(const SDemoGain_Alg_Context& context, std::size_t channels) {
    constexpr std::size_t kPort = kAlgDataInPortSize;
    const float* const link = channels == kMostChannels ? context.mLinkSw : context.mMix;
    return {rangeOf(&context, sizeof(context)),
            rangeOf(context.mBypass, kPort),
            rangeOf(context.mGainLin, kPort),
            rangeOf(context.mVolumeLin, kPort),
            rangeOf(context.mHP, kPort),
            rangeOf(context.mBand, kPort),
            rangeOf(context.mHot, kPort),
            rangeOf(context.mMix, kPort),
            rangeOf(context.mHarmSw, kPort),
            rangeOf(link, kPort),
            rangeOf(context.mAttackCoef, kPort),
            rangeOf(context.mReleaseCoef, kPort),
            rangeOf(context.mSlowCoef, kPort),
            rangeOf(context.mThreshold, kPort),
            rangeOf(context.mCurve0, kPort),
            rangeOf(context.mCurve1, kPort),
            rangeOf(context.mCurve2, kPort),
            rangeOf(context.mCurve3, kPort),
            rangeOf(context.mBufferSize, sizeof(*context.mBufferSize)),
            rangeOf(context.mAudioIn, channels * sizeof(*context.mAudioIn)),
            rangeOf(context.mAudioOut, channels * sizeof(*context.mAudioOut))};
}

// The memory that an instance touches while it processes a buffer.
struct Footprint {
    const SDemoGain_Alg_Context* mContext;
    std::size_t mChannels;
    std::array<MemoryRange, 2 + kMostChannels> mWritten; // A channel that is not there repeats the first one.
    std::array<MemoryRange, kMostChannels> mInputs;
    MemoryRange mAllRecords; // From the first to the last of the records.
};

Footprint footprintOf(const SDemoGain_Alg_Context& context, std::size_t channels) {
    const std::size_t bytes = static_cast<std::size_t>(*context.mBufferSize) * sizeof(float);
    const std::size_t last = channels - 1;
    MemoryRange all = {UINTPTR_MAX, 0};
    for (const MemoryRange& record : recordsOf(context, channels)) {
        all = {std::min(all.mBegin, record.mBegin), std::max(all.mEnd, record.mEnd)};
    }
    return {&context,
            channels,
            {rangeOf(context.mState, sizeof(*context.mState)),
             rangeOf(context.mMeters, eMeterTap_Count * sizeof(*context.mMeters)),
             rangeOf(context.mAudioOut[0], bytes), rangeOf(context.mAudioOut[last], bytes)},
            {rangeOf(context.mAudioIn[0], bytes), rangeOf(context.mAudioIn[last], bytes)},
            all};
}

// Whether `memory`, which another instance writes, is read by this one.
bool reads(const Footprint& reader, const MemoryRange& memory) {
    const auto isThere = [&](const MemoryRange& range) { return overlap(range, memory); };
    if (std::any_of(reader.mInputs.begin(), reader.mInputs.end(), isThere)) {
        return true;
    }
    if (!isThere(reader.mAllRecords)) {
        return false;
    }
    const Records records = recordsOf(*reader.mContext, reader.mChannels);
    return std::any_of(records.begin(), records.end(), isThere);
}

// Whether an instance reads or writes what the other one writes.
bool touches(const Footprint& instance, const Footprint& writer) {
    return std::any_of(writer.mWritten.begin(), writer.mWritten.end(), [&](const MemoryRange& memory) {
        return reads(instance, memory) ||
               std::any_of(instance.mWritten.begin(), instance.mWritten.end(),
                           [&](const MemoryRange& written) { return overlap(written, memory); });
    });
}

// The bits of a filter's coefficients.
template<class Section>
auto bitsOf(const Section& section) {
    return std::bit_cast<std::array<uint32_t, sizeof(Section) / sizeof(uint32_t)>>(section);
}

bool haveEqualFilters(const SDemoGain_Alg_State& left, const SDemoGain_Alg_State& right) {
    return bitsOf(left.mHp) == bitsOf(right.mHp) && bitsOf(left.mAp) == bitsOf(right.mAp) &&
           bitsOf(left.mClipCoef) == bitsOf(right.mClipCoef);
}

} // namespace

std::size_t DemoGain_CountNeighbours(std::size_t channels, SDemoGain_Alg_Context* const* begin,
                                     SDemoGain_Alg_Context* const* end, std::size_t most) {
    const std::size_t candidates = std::min(most, static_cast<std::size_t>(std::distance(begin, end)));
    if (candidates == 1) {
        return 1;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): each is written before it is read
    std::array<Footprint, DemoGain::kMostLanes> found;
    found[0] = footprintOf(**begin, channels);
    std::size_t count = 1;
    for (; count < candidates; ++count) {
        const SDemoGain_Alg_Context& next = *begin[count];
        if (*next.mBufferSize != *(*begin)->mBufferSize ||
            !haveEqualFilters(*next.mState, *(*begin)->mState)) {
            break;
        }
        found[count] = footprintOf(next, channels);
        const auto touchesNext = [&](const Footprint& earlier) {
            return touches(earlier, found[count]) || touches(found[count], earlier);
        };
        if (std::any_of(found.begin(), found.begin() + count, touchesNext)) {
            break;
        }
    }
    return count;
}
