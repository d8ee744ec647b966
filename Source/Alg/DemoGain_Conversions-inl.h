// The conversions between level and dB, for as many samples at once as a vector holds. Each is defined to the
// bit: single precision, operations in the written order. None reads outside its table or loops without
// bound, for any argument.
#if defined(DEMOGAIN_CONVERSIONS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_CONVERSIONS_INL_H
#undef DEMOGAIN_CONVERSIONS_INL_H
#else
#define DEMOGAIN_CONVERSIONS_INL_H
#endif

#include "Alg/DemoGain_Tables.h"

#include <hwy/highway.h>

#include <bit>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// One fold of a level above the tables: a quarter of the level, counted as 12 dB although it is 12.04 dB.
inline constexpr float kFoldLin = 0.25F;
inline constexpr float kFoldDB = 12.0F;
// Limit of the folds of a gain; 64 of them leave the factor 0.
inline constexpr int kMaxFolds = 64;

// Linear interpolation at `position` in a table, 0 to kDemoGain_TableIntervals, added to `offset`.
inline float interpolate(const float* table, float position, float offset) {
    const int entry = static_cast<int>(position);
    const float fraction = position - static_cast<float>(entry);
    return (offset + table[entry]) + (table[entry + 1] - table[entry]) * fraction;
}

// Gain in dB as a factor, 0.0001 at least. A gain above +24 dB is folded downwards: its factor shrinks. A
// gain reduction is never that high.
inline float DbToLin(float gainDB) {
    float folded = 1.0F;
    for (int fold = 0; fold < kMaxFolds && gainDB > fCeilDB; ++fold) {
        gainDB -= kFoldDB;
        folded *= kFoldLin;
    }
    if (gainDB < fFloorDB) {
        return folded * fFloorLin;
    }
    if (gainDB < fCeilDB) {
        return folded * interpolate(kdBToLin, (gainDB - fFloorDB) * kdBToLinDivide, 0.0F);
    }
    return folded * fCeilLin;
}

// Two neighbouring entries of a table for each sample.
template<class D>
struct TableEntries {
    hn::Vec<D> mThis;
    hn::Vec<D> mNext;
};

// Entries first, first + 1, second and second + 1, where `positions` holds first in its lower half and
// second in its upper one.
HWY_INLINE hn::Vec<hn::FixedTag<float, 4>> readPairs(const float* table, uint64_t positions) {
    const hn::FixedTag<float, 2> pair;
    const float* const first = table + (positions & 0xFFFFFFFFU);
    const float* const second = table + (positions >> 32);
    return hn::Combine(hn::FixedTag<float, 4>(), hn::LoadU(pair, second), hn::LoadU(pair, first));
}

// Reads the entries at `index` and after it for each sample. Both come with one load of 64 bits: gather
// instructions, which load one entry per sample, are slower on the processors measured.
template<class D>
HWY_INLINE TableEntries<D> readEntries(D d, const float* table, hn::Vec<hn::RebindToSigned<D>> index) {
    if constexpr (hn::MaxLanes(D()) == 4) {
        const auto positions = hn::BitCast(hn::FixedTag<uint64_t, 2>(), index);
        const auto low = readPairs(table, hn::GetLane(positions));
        const auto high = readPairs(table, hn::ExtractLane(positions, 1));
        return {hn::ConcatEven(d, high, low), hn::ConcatOdd(d, high, low)};
    } else {
        const hn::Half<D> half;
        const hn::RebindToSigned<decltype(half)> halfIndex;
        const auto low = readEntries(half, table, hn::LowerHalf(halfIndex, index));
        const auto high = readEntries(half, table, hn::UpperHalf(halfIndex, index));
        return {hn::Combine(d, high.mThis, low.mThis), hn::Combine(d, high.mNext, low.mNext)};
    }
}

// Linear interpolation at `position` in a table, 0 to kDemoGain_TableIntervals, added to `offset`.
template<class D>
HWY_INLINE hn::Vec<D> interpolate(D d, const float* table, hn::Vec<D> position, hn::Vec<D> offset) {
    const hn::RebindToSigned<D> integer;
    const auto entry = hn::ConvertTo(integer, position);
    const auto fraction = hn::Sub(position, hn::ConvertTo(d, entry));
    const auto entries = readEntries(d, table, entry);
    return hn::Add(hn::Add(offset, entries.mThis), hn::Mul(hn::Sub(entries.mNext, entries.mThis), fraction));
}

// Level (linear, 0 or more) in dB, -80 at least.
//
// A level above the tables is folded: quartered until it is within them, 12 dB for each fold. A fold takes 2
// from the exponent and leaves the mantissa, and floats of one sign are ordered like their bits. So the
// number of folds follows from the distance between the bits of the level and those of the highest level. The
// bottom and the top of the table are entries of it, so no level needs a case of its own.
template<class D>
HWY_INLINE hn::Vec<D> LinToDb(D d, hn::Vec<D> level) {
    const hn::RebindToSigned<D> integer;
    constexpr int kBitsPerFold = 24; // two steps of an exponent that begins at bit 23
    constexpr int32_t kRoundUp = (1 << kBitsPerFold) - 1;
    const auto bits = hn::BitCast(integer, level);
    const auto above = hn::Sub(bits, hn::Set(integer, std::bit_cast<int32_t>(fCeilLin) - kRoundUp));
    const auto folds = hn::Max(hn::ShiftRight<kBitsPerFold>(above), hn::Zero(integer));
    const auto folded = hn::BitCast(d, hn::Sub(bits, hn::ShiftLeft<kBitsPerFold>(folds)));
    const auto foldedDB = hn::Mul(hn::ConvertTo(d, folds), hn::Set(d, kFoldDB));
    const auto position = hn::Mul(hn::Sub(folded, hn::Set(d, fFloorLin)), hn::Set(d, kLinTodBDivide));
    return interpolate(d, kLinTodB, hn::Max(position, hn::Zero(d)), foldedDB);
}

// Gains in dB as factors, one after the other.
template<class D>
HWY_NOINLINE hn::Vec<D> eachDbToLin(D d, hn::Vec<D> gainDB) {
    HWY_ALIGN float values[hn::MaxLanes(D())];
    hn::Store(gainDB, d, values);
    for (float& value : values) {
        value = DbToLin(value);
    }
    return hn::Load(d, values);
}

// Gain in dB as a factor, 0.0001 at least. Gain reductions are negative: they do not reach the top of the
// table, where folding begins.
template<class D>
HWY_INLINE hn::Vec<D> DbToLin(D d, hn::Vec<D> gainDB) {
    if (HWY_UNLIKELY(!hn::AllTrue(d, hn::Lt(gainDB, hn::Set(d, fCeilDB))))) {
        return eachDbToLin(d, gainDB);
    }
    const auto position = hn::Mul(hn::Sub(gainDB, hn::Set(d, fFloorDB)), hn::Set(d, kdBToLinDivide));
    return interpolate(d, kdBToLin, hn::Max(position, hn::Zero(d)), hn::Zero(d));
}

// Half of |v| near zero is a polynomial over s = v^2, whose coefficients of s to s^4 are fixed by definition:
// (-kLevelS4 * s^2 + kLevelS3 * s - kLevelS2) * s^2 + kLevelS1 * s.
inline constexpr float kLevelS1 = 1.6720511F;
inline constexpr float kLevelS2 = 3.7919977F;
inline constexpr float kLevelS3 = 4.5072875F;
inline constexpr float kLevelS4 = 1.9086499F;
// Half of the clip level of silence, fixed by definition.
inline constexpr float kHalfClipFloor = 0.015623941F;

template<class D>
HWY_INLINE hn::Vec<D> halfLevelPolynomial(D d, hn::Vec<D> v) {
    const auto s = hn::Mul(v, v);
    const auto s2 = hn::Mul(s, s);
    const auto inner = hn::Sub(hn::Add(hn::Mul(hn::Set(d, -kLevelS4), s2), hn::Mul(hn::Set(d, kLevelS3), s)),
                               hn::Set(d, kLevelS2));
    return hn::Add(hn::Mul(inner, s2), hn::Mul(hn::Set(d, kLevelS1), s));
}

// Level of a sample: |v| above 1, a rounded |v| below. It steps from 0.957 to 1 where they meet; intended.
template<class D>
HWY_INLINE hn::Vec<D> Level(D d, hn::Vec<D> v) {
    const auto magnitude = hn::Abs(v);
    const auto rounded = hn::Mul(hn::Set(d, 2.0F), halfLevelPolynomial(d, v));
    return hn::IfThenElse(hn::Gt(magnitude, hn::Set(d, 1.0F)), magnitude, rounded);
}

// Clip level of a sample: as Level, but the bias is added where the magnitude is measured. The polynomial
// leaves the bias out; it is 0.03124788 for silence.
template<class D>
HWY_INLINE hn::Vec<D> ClipLevel(D d, hn::Vec<D> v, hn::Vec<D> bias) {
    const auto magnitude = hn::Abs(hn::Add(bias, v));
    const auto rounded =
        hn::Mul(hn::Set(d, 2.0F), hn::Add(halfLevelPolynomial(d, v), hn::Set(d, kHalfClipFloor)));
    return hn::IfThenElse(hn::Gt(magnitude, hn::Set(d, 1.0F)), magnitude, rounded);
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
