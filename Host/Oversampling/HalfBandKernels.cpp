#include "Host/Oversampling/HalfBandKernels.h"

#include "Simd/Processor.h"

#include <algorithm>
#include <cstdlib>

// This file is compiled once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Host/Oversampling/HalfBandKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace varno {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Frames lie side by side in the lanes, so that each frame's sum is computed in the written order, whatever
// the width of a vector.
using Frames = hn::CappedTag<float, kKernelSlack / 2>;
using Samples = hn::Vec<Frames>;

// Vectors whose sums are computed side by side: an addition has to wait for the one before it.
constexpr std::size_t kSums = 4;

HWY_INLINE Samples usable(Samples samples) {
    const Frames d;
    const auto size = hn::Abs(samples);
    const auto isUsable =
        hn::And(hn::Ge(size, hn::Set(d, kLeastSample)), hn::Le(size, hn::Set(d, kMostSample)));
    return hn::IfThenElseZero(isUsable, samples);
}

// The sums over the pairs of a filter for kCount vectors of frames from `in` on.
template<std::size_t kCount, std::size_t kPairs>
HWY_INLINE void sumPairs(const HalfBand<kPairs>& filter, float scale, const float* in,
                         Samples (&sums)[kCount]) {
    const Frames d;
    const std::size_t lanes = hn::Lanes(d);
    constexpr auto kHistory = static_cast<std::ptrdiff_t>(HalfBand<kPairs>::kDelay);
    const float* older = in - kHistory;
    const float* newer = in;
    const auto pair = [&](std::size_t vector, Samples factor) HWY_ATTR {
        return hn::Mul(factor,
                       hn::Add(hn::LoadU(d, older + vector * lanes), hn::LoadU(d, newer + vector * lanes)));
    };
    for (std::size_t i = 0; i < kPairs; ++i, ++older, --newer) {
        const Samples factor = hn::Set(d, filter.pairs[i] * scale);
        for (std::size_t vector = 0; vector < kCount; ++vector) {
            sums[vector] = i == 0 ? pair(vector, factor) : hn::Add(sums[vector], pair(vector, factor));
        }
    }
}

// Calls `work` for all frames with as many vectors at once as it is worth; the last vector may hold frames
// that nobody asked for.
template<class Work>
HWY_INLINE void forVectors(std::size_t frames, const Work& work) {
    const std::size_t lanes = hn::Lanes(Frames());
    std::size_t frame = 0;
    for (; frame + kSums * lanes <= frames; frame += kSums * lanes) {
        Samples sums[kSums];
        work(frame, sums);
    }
    for (; frame < frames; frame += lanes) {
        Samples sum[1];
        work(frame, sum);
    }
}

template<std::size_t kPairs>
HWY_INLINE void raiseBy(const HalfBand<kPairs>& filter, const float* in, float* out, std::size_t frames) {
    forVectors(frames, [&](std::size_t frame, auto& sums) HWY_ATTR {
        const Frames d;
        constexpr float kGain = 2.0F; // every second sample that goes in is 0
        sumPairs(filter, kGain, in + frame, sums);
        for (const Samples& sum : sums) {
            const Samples middle = hn::LoadU(d, in + frame - (kPairs - 1));
            hn::StoreInterleaved2(usable(sum), usable(middle), d, out + 2 * frame);
            frame += hn::Lanes(d);
        }
    });
}

template<std::size_t kPairs>
HWY_INLINE void lowerBy(const HalfBand<kPairs>& filter, const float* even, const float* odd, float* out,
                        std::size_t frames) {
    forVectors(frames, [&](std::size_t frame, auto& sums) HWY_ATTR {
        const Frames d;
        sumPairs(filter, 1.0F, odd + frame, sums);
        for (const Samples& sum : sums) {
            const Samples middle = hn::LoadU(d, even + frame - (kPairs - 1));
            hn::StoreU(hn::Add(sum, hn::Mul(hn::Set(d, 0.5F), middle)), d, out + frame);
            frame += hn::Lanes(d);
        }
    });
}

void raiseFirst(const float* in, float* out, std::size_t frames) {
    raiseBy(kFirstHalfBand, in, out, frames);
}
void raiseSecond(const float* in, float* out, std::size_t frames) {
    raiseBy(kSecondHalfBand, in, out, frames);
}
void raiseThird(const float* in, float* out, std::size_t frames) {
    raiseBy(kThirdHalfBand, in, out, frames);
}
void lowerFirst(const float* even, const float* odd, float* out, std::size_t frames) {
    lowerBy(kFirstHalfBand, even, odd, out, frames);
}
void lowerSecond(const float* even, const float* odd, float* out, std::size_t frames) {
    lowerBy(kSecondHalfBand, even, odd, out, frames);
}
void lowerThird(const float* even, const float* odd, float* out, std::size_t frames) {
    lowerBy(kThirdHalfBand, even, odd, out, frames);
}

// The caller's samples end where they end: the last ones are taken one by one.
void copyUsable(const float* in, float* out, std::size_t frames) {
    const Frames d;
    std::size_t frame = 0;
    for (; frame + hn::Lanes(d) <= frames; frame += hn::Lanes(d)) {
        hn::StoreU(usable(hn::LoadU(d, in + frame)), d, out + frame);
    }
    for (; frame < frames; ++frame) {
        hn::StoreU(usable(hn::Set(d, in[frame])), d, out + frame);
    }
}

void separateUsable(const float* in, float* even, float* odd, std::size_t frames) {
    const Frames d;
    for (std::size_t frame = 0; frame < frames; frame += hn::Lanes(d)) {
        Samples first;
        Samples second;
        hn::LoadInterleaved2(d, in + 2 * frame, first, second);
        hn::StoreU(usable(first), d, even + frame);
        hn::StoreU(usable(second), d, odd + frame);
    }
}

} // namespace HWY_NAMESPACE
} // namespace varno
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace varno {
namespace {

#define VARNO_HALF_BAND_KERNELS(space)                                                                       \
    {{{&space::raiseFirst, &space::lowerFirst},                                                              \
      {&space::raiseSecond, &space::lowerSecond},                                                            \
      {&space::raiseThird, &space::lowerThird}}},                                                            \
        &space::copyUsable, &space::separateUsable

constexpr HalfBandKernels kKernels[] = {
#if HWY_TARGETS & HWY_AVX3
    {"avx512", HWY_AVX3, VARNO_HALF_BAND_KERNELS(N_AVX3)},
#endif
#if HWY_TARGETS & HWY_AVX2
    {"avx2", HWY_AVX2, VARNO_HALF_BAND_KERNELS(N_AVX2)},
#endif
#if HWY_TARGETS & HWY_SSSE3
    {"baseline", HWY_SSSE3, VARNO_HALF_BAND_KERNELS(N_SSSE3)},
#endif
#if HWY_TARGETS & HWY_NEON
    {"neon", HWY_NEON, VARNO_HALF_BAND_KERNELS(N_NEON)},
#endif
#if HWY_TARGETS & HWY_EMU128
    {"emulated", HWY_EMU128, VARNO_HALF_BAND_KERNELS(N_EMU128)},
#endif
};

#undef VARNO_HALF_BAND_KERNELS

} // namespace

std::span<const HalfBandKernels> halfBandKernels() {
    return kKernels;
}

bool canRun(const HalfBandKernels& kernels) {
    return (processorTargets() & kernels.target) != 0;
}

const HalfBandKernels& chooseHalfBandKernels() {
    const char* const variable = std::getenv("VARNO_SIMD");
    const std::string_view name = variable != nullptr ? variable : "";
    const auto* const requested = std::ranges::find_if(
        kKernels, [&](const HalfBandKernels& kernels) { return kernels.name == name && canRun(kernels); });
    return requested != std::end(kKernels) ? *requested : *std::ranges::find_if(kKernels, canRun);
}

} // namespace varno

#endif
