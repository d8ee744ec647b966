#include "Measure/Measurements.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varno {
namespace {

// A constant input at which every curve reduces by some dB.
constexpr float kLoud = 0.5F;
// Until everything has settled: more than ten times the slowest time constant that is expected.
constexpr double kSettlingS = 100.0;
// What is recorded of a response: after this the attack, at most some 50 ms, is over, and the slow follower
// is not.
constexpr double kRecordedS = 0.6;

// A factor per sample from that of several samples.
double perSample(double factor, std::size_t samples) {
    return std::pow(std::max(factor, 0.0), 1.0 / static_cast<double>(samples));
}

// Two followers go from 1 to 0 side by side, each by its factor per sample. The factor of one from the sum of
// both, where that of the other is known: read after the sum has fallen far enough to be told from rounding.
double besideFollower(const std::vector<double>& sum, double known) {
    constexpr double kFallen = 1.4;
    const auto found = std::ranges::find_if(sum, [](double value) { return value < kFallen; });
    const std::size_t frame = std::min(static_cast<std::size_t>(found - sum.begin()), sum.size() - 1);
    const auto frames = static_cast<double>(frame + 1);
    return perSample(sum[frame] - std::pow(known, frames), frame + 1);
}

// Time after which 1/e of a change remains, in ms; 0 for a change at once.
double timeConstantMS(double factor, double rateHz) {
    constexpr double kMSPerS = 1000.0;
    return factor <= 0.0 ? 0.0 : -kMSPerS / (rateHz * std::log(factor));
}

struct Times {
    double attackMS;
    double releaseMS;
    double slowMS; // the follower that has one time for both
};

Times timesAt(const EffectMaker& effect, const std::vector<ParameterText>& changes) {
    const auto instance = effect.make(changes);
    const auto recorded = static_cast<std::size_t>(kRecordedS * effect.rateHz());
    auto attack = reductionOfConstant(*instance, kLoud, recorded);
    Samples loud(static_cast<std::size_t>(kSettlingS * effect.rateHz()), kLoud);
    float* channel = loud.data();
    instance->process(&channel, &channel, static_cast<std::int32_t>(loud.size()));
    const double perFollower = reductionOfConstant(*instance, kLoud, 1).front() / 2.0;
    auto release = reductionOfConstant(*instance, 0.0F, recorded);
    std::ranges::transform(attack, attack.begin(), [&](double value) { return 2.0 - value / perFollower; });
    std::ranges::transform(release, release.begin(), [&](double value) { return value / perFollower; });
    const double slow = perSample(attack.back(), attack.size());
    return {timeConstantMS(besideFollower(attack, slow), effect.rateHz()),
            timeConstantMS(besideFollower(release, slow), effect.rateHz()),
            timeConstantMS(slow, effect.rateHz())};
}

} // namespace

Figure measureTimes(const EffectMaker& effect) {
    constexpr std::array<const char*, 5> kKnobs = {"0", "0.25", "0.5", "0.75", "1"};
    struct Circumstances {
        const char* curve;
        const char* uk;
    };
    constexpr Circumstances kCircumstances[] = {{"#5", "off"}, {"#5", "on"}, {"#6", "off"}, {"#8", "off"}};
    Figure figure{
        .name = "times",
        .explanation =
            "time constants in ms after which 37 % of a change of the gain reduction remains, with Attack "
            "and Release at the same place. The slow follower, which runs beside them, has one for both "
            "ways.",
        .columns = {{"curve", "CURVE"},
                    {"uk", "UK"},
                    {"knob", "KNOBS", 2},
                    {"attack_ms", "ATTACK ms", 2},
                    {"release_ms", "RELEASE ms", 1},
                    {"slow_ms", "SLOW ms", 0}}};
    for (const auto& [curve, uk] : kCircumstances) {
        for (const std::string knob : kKnobs) {
            const Times times = timesAt(effect, {{"Ratio", curve}, {"UK", uk}, {"Atk", knob}, {"Rls", knob}});
            figure.rows.push_back({std::string(curve).substr(1), std::string(uk), std::stod(knob),
                                   times.attackMS, times.releaseMS, times.slowMS});
        }
    }
    return figure;
}

} // namespace varno
