#include "Measure/Measurements.h"
#include "Measure/Spectrum.h"
#include "Surround/Settings/NumberText.h"

namespace varno {
namespace {

constexpr double kAliasS = 4.0;

} // namespace

const std::vector<int>& aliasingTonesHz() {
    static const std::vector<int> tones = {2999, 4999, 6997, 9973, 14983};
    return tones;
}

Figure measureAliasing(const EffectMaker& effect, const AliasingGrid& grid,
                       const std::function<void()>& afterEach) {
    Figure figure{
        .name = "aliasing",
        .explanation =
            "sum of all products from 16 Hz to 20 kHz that are no harmonic of the tone, and the largest "
            "of them, in dB against the tone in the output, by peak level in dBFS and drive (Hot).",
        .columns = {{"level_db", "LEVEL dBFS"},
                    {"hot", "HOT", 2},
                    {"tone_hz", "TONE Hz"},
                    {"sum_db", "SUM dB", 1},
                    {"largest_db", "LARGEST dB", 1},
                    {"largest_hz", "AT Hz"}}};
    for (const double levelDB : grid.levelsDB) {
        for (const double drive : grid.drives) {
            for (const int toneHz : grid.tonesHz) {
                const Samples output = effect.processed({{"Hot", textFromNumber(drive)}},
                                                        sine(toneHz, levelDB, kAliasS, effect.rateHz()));
                const ToneSpectrum spectrum(lastSecond(output, effect.rateHz()), toneHz);
                const int largestHz = spectrum.largestInharmonicHz();
                figure.rows.push_back({levelDB, drive, static_cast<double>(toneHz),
                                       powerDecibels(spectrum.inharmonics() / spectrum.tone()),
                                       powerDecibels(spectrum.power(largestHz) / spectrum.tone()),
                                       static_cast<double>(largestHz)});
                afterEach();
            }
        }
    }
    return figure;
}

} // namespace varno
