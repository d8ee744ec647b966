#include "Measure/Measurements.h"
#include "Surround/Settings/NumberText.h"

#include <cstddef>

namespace varno {
namespace {

constexpr double kCurveToneHz = 1000.0;
// The slowest follower of any curve has settled to 0.1 dB by then.
constexpr double kSettledS = 12.0;
constexpr int kCurves = 8;
constexpr double kSoftestDB = -36.0;
constexpr double kLevelStepDB = 1.5;
constexpr int kCurveLevels = 29; // to +6 dBFS

double curveChangeDB(const EffectMaker& effect, int curve, const Samples& tone) {
    const Samples output = effect.processed({{"Ratio", '#' + std::to_string(curve)}, {"Hot", "0"}}, tone);
    return decibels(rms(lastSecond(output, effect.rateHz())) / rms(lastSecond(tone, effect.rateHz())));
}

} // namespace

Figure measureCurves(const EffectMaker& effect) {
    Figure figure{.name = "curves",
                  .explanation =
                      "change of the level (RMS) of a steady 1 kHz tone in dB by each curve (Ratio), "
                      "over its peak level in dBFS. Hot is 0.",
                  .columns = {{"level_db", "LEVEL", 1}}};
    for (int curve = 1; curve <= kCurves; ++curve) {
        figure.columns.push_back({"curve_" + std::to_string(curve), std::to_string(curve), 2});
    }
    for (int step = 0; step < kCurveLevels; ++step) {
        const double levelDB = kSoftestDB + step * kLevelStepDB;
        const Samples tone = sine(kCurveToneHz, levelDB, kSettledS, effect.rateHz());
        auto& row = figure.rows.emplace_back(1, levelDB);
        for (int curve = 1; curve <= kCurves; ++curve) {
            row.emplace_back(curveChangeDB(effect, curve, tone));
        }
    }
    return figure;
}

} // namespace varno
