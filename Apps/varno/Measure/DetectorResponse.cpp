#include "Measure/Measurements.h"
#include "Surround/Settings/NumberText.h"

namespace varno {
namespace {

// The reduction at which levels are compared: that of the firm curve 5 around the middle of its knee.
constexpr double kReductionDB = 6.0;
constexpr double kDetectedS = 3.0;

// Levels between which a tone is searched for, dBFS of its peak.
constexpr double kSoftDB = -30.0;
constexpr double kLoudDB = 40.0;
// Halvings of that range: the level is found to 0.001 dB.
constexpr int kHalvings = 16;

double reductionDB(const EffectMaker& effect, const std::vector<ParameterText>& filters, double frequencyHz,
                   double levelDB) {
    const Samples tone = sine(frequencyHz, levelDB, kDetectedS, effect.rateHz());
    const Samples output = effect.processed(filters, tone);
    return decibels(rms(lastSecond(tone, effect.rateHz())) / rms(lastSecond(output, effect.rateHz())));
}

// The level of a tone which the effect reduces by kReductionDB.
double levelForReduction(const EffectMaker& effect, const char* highPass, const char* band,
                         double frequencyHz) {
    const std::vector<ParameterText> settings = {{"HP", highPass}, {"Band", band}, {"Hot", "0"},
                                                 {"Ratio", "#5"},  {"Atk", "0.5"}, {"Rls", "0.5"}};
    double low = kSoftDB;
    double high = kLoudDB;
    for (int halving = 0; halving < kHalvings; ++halving) {
        const double middle = (low + high) / 2.0;
        (reductionDB(effect, settings, frequencyHz, middle) < kReductionDB ? low : high) = middle;
    }
    return (low + high) / 2.0;
}

} // namespace

Figure measureDetector(const EffectMaker& effect, const Grid& frequenciesHz) {
    Figure figure{
        .name = "detector",
        .explanation =
            "how much louder or softer, in dB, the detector hears a tone with a filter than without: by so "
            "much softer or louder the tone must be to be reduced by the same 6 dB.",
        .columns = {{"frequency_hz", "FREQUENCY Hz"},
                    {"high_pass_db", "HIGH PASS dB", 1},
                    {"band_db", "BAND dB", 1}}};
    for (const double frequencyHz : frequenciesHz) {
        if (frequencyHz >= effect.rateHz() / 2.0) {
            break;
        }
        const double plain = levelForReduction(effect, "off", "off", frequencyHz);
        figure.rows.push_back({frequencyHz, plain - levelForReduction(effect, "on", "off", frequencyHz),
                               plain - levelForReduction(effect, "off", "on", frequencyHz)});
    }
    return figure;
}

} // namespace varno
