#ifndef VARNO_APPS_VARNO_RENDER_SAMPLELEVELS_H
#define VARNO_APPS_VARNO_RENDER_SAMPLELEVELS_H

#include "AudioFile/Block.h"

#include <cstdint>

namespace varno {

/// What is measured of a signal's samples.
class SampleLevels {
public:
    /// Adds the single precision samples of a block.
    void add(const AudioBlock& block);

    /// The largest magnitude of usable samples, full scale 1.
    double peak() const { return mPeak; }

    /// How many samples are not usable: not a number, infinite or above 1e30 in magnitude. The effect
    /// processes them as silence.
    std::int64_t unusable() const { return mUnusable; }

private:
    void add(const float* samples, int count);

    float mPeak = 0.0F;
    std::int64_t mUnusable = 0;
};

} // namespace varno

#endif
