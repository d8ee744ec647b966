#include "Measure/Measurements.h"
#include "Measure/Spectrum.h"
#include "Surround/Settings/NumberText.h"

#include <cmath>

namespace varno {
namespace {

constexpr int kDrivenToneHz = 1000;
constexpr double kDrivenS = 4.0;
constexpr double kDrivenLevelsDB[] = {-24.0, -18.0, -12.0, -6.0, 0.0};
constexpr const char* kDriveSettings[] = {"0", "0.07", "0.1", "0.2", "0.3", "0.4", "0.6", "0.8", "1"};

struct Driven {
    double rms;
    double distortionPercent; // harmonics against the fundamental
};

Driven driven(const EffectMaker& effect, const char* drive, const char* harmonics, double levelDB) {
    const Samples output = effect.processed({{"Hot", drive}, {"HSw", harmonics}},
                                            sine(kDrivenToneHz, levelDB, kDrivenS, effect.rateHz()));
    const auto second = lastSecond(output, effect.rateHz());
    const ToneSpectrum spectrum(second, kDrivenToneHz);
    constexpr double kPercent = 100.0;
    return {rms(second), kPercent * std::sqrt(spectrum.harmonics() / spectrum.tone())};
}

} // namespace

Figure measureDrive(const EffectMaker& effect) {
    Figure figure{
        .name = "drive",
        .explanation =
            "what the drive (Hot) makes of a steady 1 kHz tone of a peak level in dBFS, without and "
            "with Harmonic Select (HSw): change of the level (RMS) in dB against Hot 0, and "
            "harmonics in percent of the fundamental.",
        .columns = {{"level_db", "LEVEL dBFS"},
                    {"hot", "HOT", 2},
                    {"change_db", "CHANGE dB", 1},
                    {"harmonics_percent", "HARMONICS %", 2},
                    {"change_with_select_db", "WITH HSw dB", 1},
                    {"harmonics_with_select_percent", "WITH HSw %", 2}}};
    for (const double levelDB : kDrivenLevelsDB) {
        const double clean = driven(effect, "0", "off", levelDB).rms;
        for (const char* drive : kDriveSettings) {
            const Driven plain = driven(effect, drive, "off", levelDB);
            const Driven selected = driven(effect, drive, "on", levelDB);
            figure.rows.push_back({levelDB, std::stod(drive), decibels(plain.rms / clean),
                                   plain.distortionPercent, decibels(selected.rms / clean),
                                   selected.distortionPercent});
        }
    }
    return figure;
}

} // namespace varno
