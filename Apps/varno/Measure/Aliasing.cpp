#include "Measure/Measurements.h"
#include "Measure/Spectrum.h"
#include "Surround/Settings/NumberText.h"

#include <cmath>

namespace varno {
namespace {

// Folded harmonics of round frequencies would lie under harmonics: primes, or close to them.
constexpr int kAliasTonesHz[] = {2999, 4999, 6997, 9973, 14983};
constexpr double kAliasS = 4.0;
constexpr double kAliasLevelsDB[] = {-24.0, -18.0, -12.0, -6.0, 0.0};
constexpr const char* kAliasDrives[] = {"0.07", "0.1", "0.2", "0.3", "0.4", "0.6", "1"};

// dB of a ratio of powers.
double powerDecibels(double ratio) {
    return decibels(std::sqrt(ratio));
}

} // namespace

Figure measureAliasing(const EffectMaker& effect) {
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
    for (const double levelDB : kAliasLevelsDB) {
        for (const char* drive : kAliasDrives) {
            for (const int toneHz : kAliasTonesHz) {
                const Samples output =
                    effect.processed({{"Hot", drive}}, sine(toneHz, levelDB, kAliasS, effect.rateHz()));
                const ToneSpectrum spectrum(lastSecond(output, effect.rateHz()), toneHz);
                const int largestHz = spectrum.largestInharmonicHz();
                figure.rows.push_back({levelDB, std::stod(drive), static_cast<double>(toneHz),
                                       powerDecibels(spectrum.inharmonics() / spectrum.tone()),
                                       powerDecibels(spectrum.power(largestHz) / spectrum.tone()),
                                       static_cast<double>(largestHz)});
            }
        }
    }
    return figure;
}

} // namespace varno
