#include "Measure/Measurements.h"
#include "Measure/Spectrum.h"
#include "Surround/Settings/NumberText.h"

namespace varno {
namespace {

// Its highest harmonic looked at is below half of every sample rate that is offered.
constexpr int kHarmonicToneHz = 1000;
constexpr int kHighestHarmonic = 7;
constexpr double kHarmonicToneDB = -12.0;
constexpr double kHarmonicToneS = 4.0;
// Less is the rounding of single precision, and no harmonic.
constexpr double kLeastDB = -140.0;

FigureCell levelCell(double powerRatio) {
    const double levelDB = powerDecibels(powerRatio);
    return levelDB < kLeastDB ? FigureCell() : FigureCell(levelDB);
}

} // namespace

Figure measureHarmonics(const EffectMaker& effect, const Grid& drives) {
    Figure figure{
        .name = "harmonics",
        .explanation =
            "harmonics of a steady 1 kHz tone with a peak of -12 dBFS, in dB against the fundamental in the "
            "output: the sum of all (THD) and the second to the seventh, by drive (Hot) and Harmonic Select "
            "(HSw). What is below -140 dB is left out.",
        .columns = {{"hot", "HOT", 3}, {"hsw", "HSw"}, {"thd_db", "THD dB", 1}}};
    for (int harmonic = 2; harmonic <= kHighestHarmonic; ++harmonic) {
        const std::string number = std::to_string(harmonic);
        figure.columns.push_back({"h" + number + "_db", "H" + number + " dB", 1});
    }
    for (const char* select : {"off", "on"}) {
        for (const double drive : drives) {
            const Samples output =
                effect.processed({{"Hot", textFromNumber(drive)}, {"HSw", select}},
                                 sine(kHarmonicToneHz, kHarmonicToneDB, kHarmonicToneS, effect.rateHz()));
            const ToneSpectrum spectrum(lastSecond(output, effect.rateHz()), kHarmonicToneHz);
            auto& row = figure.rows.emplace_back();
            row.emplace_back(drive);
            row.emplace_back(std::string(select));
            row.push_back(levelCell(spectrum.harmonics() / spectrum.tone()));
            for (int harmonic = 2; harmonic <= kHighestHarmonic; ++harmonic) {
                row.push_back(levelCell(spectrum.power(harmonic * kHarmonicToneHz) / spectrum.tone()));
            }
        }
    }
    return figure;
}

} // namespace varno
