#include "Measure/Measurements.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

constexpr float kBurstPeak = 0.5F;
constexpr const char* kKnobPlaces[] = {"0", "0.25", "0.5", "0.75", "1"};
constexpr double kMSPerS = 1000.0;

// The reduction after each frame of the burst and of the silence after it.
std::vector<double> reductionOfBurst(const EffectMaker& effect, const char* knobs, std::size_t frames) {
    const auto instance = effect.make({{"Atk", knobs}, {"Rls", knobs}});
    const auto loudFrames = static_cast<std::size_t>(std::llround(kBurstMS / kMSPerS * effect.rateHz()));
    std::vector<double> reduction = reductionOfConstant(*instance, kBurstPeak, std::min(loudFrames, frames));
    const auto rest = reductionOfConstant(*instance, 0.0F, frames - reduction.size());
    reduction.insert(reduction.end(), rest.begin(), rest.end());
    return reduction;
}

} // namespace

Figure measureBurst(const EffectMaker& effect, const Grid& timesMS) {
    Figure figure{.name = "burst",
                  .explanation =
                      "gain reduction in dB over the time since the start of a burst, in ms, with Attack and "
                      "Release at the same place. The burst is a constant 0.5 (-6 dBFS) for 300 ms, after "
                      "which there is silence.",
                  .columns = {{"time_ms", "TIME ms", 1}}};
    const auto frameAt = [&](double timeMS) {
        return static_cast<std::size_t>(std::llround(timeMS / kMSPerS * effect.rateHz()));
    };
    for (const double timeMS : timesMS) {
        figure.rows.push_back({timeMS});
    }
    for (const std::string knobs : kKnobPlaces) {
        figure.columns.push_back({"knobs_" + knobs, "KNOBS " + knobs, 2});
        const auto reduction = reductionOfBurst(effect, knobs.c_str(), frameAt(timesMS.back()) + 1);
        for (std::size_t row = 0; row < timesMS.size(); ++row) {
            figure.rows[row].emplace_back(reduction[frameAt(timesMS[row])]);
        }
    }
    return figure;
}

} // namespace varno
