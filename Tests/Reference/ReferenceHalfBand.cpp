#include "Tests/Reference/ReferenceHalfBand.h"

#include "Host/Oversampling/HalfBandKernels.h"

#include <cmath>
#include <span>

namespace varno::reference {
namespace {

std::span<const float> pairsOf(std::size_t stage) {
    switch (stage) {
    case 0:
        return kFirstHalfBand.pairs;
    case 1:
        return kSecondHalfBand.pairs;
    default:
        return kThirdHalfBand.pairs;
    }
}

float usableSample(float sample) {
    const float size = std::fabs(sample);
    return size >= kLeastSample && size <= kMostSample ? sample : 0.0F;
}

float sampleAt(const std::vector<float>& sound, std::ptrdiff_t index) {
    return index < 0 ? 0.0F : usableSample(sound[static_cast<std::size_t>(index)]);
}

// From the ends of the filter to its middle; `newest` is the sample at the filter's first coefficient, and
// `step` lies between those of two neighbouring pairs.
float pairSum(const std::vector<float>& sound, std::span<const float> pairs, std::ptrdiff_t newest,
              std::ptrdiff_t step, float gain) {
    const auto last = 2 * static_cast<std::ptrdiff_t>(pairs.size()) - 1;
    float sum = 0.0F;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto distance = static_cast<std::ptrdiff_t>(i);
        const float both =
            sampleAt(sound, newest - (last - distance) * step) + sampleAt(sound, newest - distance * step);
        const float product = pairs[i] * gain * both;
        sum = i == 0 ? product : sum + product;
    }
    return sum;
}

} // namespace

std::vector<float> raised(std::vector<float> sound, int factor) {
    for (std::size_t stage = 0; 1 << stage < factor; ++stage) {
        const std::span<const float> pairs = pairsOf(stage);
        const auto middle = static_cast<std::ptrdiff_t>(pairs.size()) - 1;
        std::vector<float> twice;
        for (std::ptrdiff_t frame = 0; frame < std::ssize(sound); ++frame) {
            twice.push_back(pairSum(sound, pairs, frame, 1, 2.0F));
            twice.push_back(sampleAt(sound, frame - middle));
        }
        for (float& sample : twice) {
            sample = usableSample(sample);
        }
        sound = twice;
    }
    return sound;
}

std::vector<float> lowered(std::vector<float> sound, int factor) {
    for (std::size_t stage = 0; 1 << stage < factor; ++stage) {
        // Of the highest rate first.
        const std::span<const float> pairs =
            pairsOf(static_cast<std::size_t>(std::lround(std::log2(factor))) - 1 - stage);
        const auto middle = static_cast<std::ptrdiff_t>(2 * pairs.size()) - 1;
        std::vector<float> half;
        for (std::ptrdiff_t later = 1; later < std::ssize(sound); later += 2) {
            half.push_back(pairSum(sound, pairs, later, 2, 1.0F) + 0.5F * sampleAt(sound, later - middle));
        }
        sound = half;
    }
    return sound;
}

} // namespace varno::reference
