#ifndef VARNO_APPS_VARNO_RENDER_SAMPLELEVELS_H
#define VARNO_APPS_VARNO_RENDER_SAMPLELEVELS_H

#include <cmath>
#include <cstdint>

namespace varno {

/// Whether the effect processes a sample as it is. What is not a number, infinite or above 1e30 in magnitude
/// it processes as silence. [any]
inline bool isUsableSample(float sample) {
    constexpr float kLargest = 1e30F;
    return std::fabs(sample) <= kLargest; // false for not-a-number
}

/// What is measured of a signal's samples.
class SampleLevels {
public:
    /// Adds samples of one channel.
    void add(const float* samples, int count);

    /// The largest magnitude of usable samples, full scale 1.
    double peak() const { return mPeak; }

    /// How many samples are not usable; see isUsableSample().
    std::int64_t unusable() const { return mUnusable; }

private:
    float mPeak = 0.0F;
    std::int64_t mUnusable = 0;
};

} // namespace varno

#endif
