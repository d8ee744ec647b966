#include "Render/MeterLevels.h"

#include "DemoGain_MeterLaw.h"

#include <algorithm>

namespace varno {

// The effect describes its meters in the order of the taps.
std::optional<double> reductionDB(const Instance& instance, std::span<const float> meters) {
    std::optional<double> result;
    const auto& described = instance.effect().meters;
    for (std::size_t tap = 0; tap < std::min(described.size(), meters.size()); ++tap) {
        if (integerProperty(described[tap].properties, AAX_eProperty_Meter_Kind) ==
            AAX_eMeterKind_GainReduction) {
            result = std::max(result.value_or(0.0), meters[tap] / -double{DemoGain::kMeterPerDB});
        }
    }
    return result;
}

} // namespace varno
