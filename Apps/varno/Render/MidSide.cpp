#include "Render/MidSide.h"

#include "Render/SampleLevels.h"

namespace varno {
namespace {

constexpr float kHalf = 0.5F;

float usable(float sample) {
    return isUsableSample(sample) ? sample : 0.0F;
}

} // namespace

void toMidSide(float* left, float* right, int frames) {
    for (int i = 0; i < frames; ++i) {
        const float l = usable(left[i]);
        const float r = usable(right[i]);
        left[i] = kHalf * (l + r);
        right[i] = kHalf * (l - r);
    }
}

void toLeftRight(float* mid, float* side, int frames) {
    for (int i = 0; i < frames; ++i) {
        const float m = mid[i];
        const float s = side[i];
        mid[i] = m + s;
        side[i] = m - s;
    }
}

} // namespace varno
