#include "Measure/MeasuredEffect.h"
#include "Measure/Spectrum.h"
#include "Tests/Integration/OversampledEffect.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace varno::test {
namespace {

constexpr double kSeconds = 4.0;
// Folded harmonics of round frequencies would lie under harmonics.
constexpr int kTonesHz[] = {2999, 4999, 6997, 9973, 14983};

class OversamplingAliasTest : public OversampledEffect {
protected:
    // The sum of all inharmonic products in dB against the tone that comes out, in the last second.
    double aliasesDB(double rateHz, std::int32_t factor, int toneHz, double levelDB, double hot) {
        OversampledInstance effect(module(), factor, 1, rateHz, {{"Hot", hot}});
        std::vector<float> sound = sine(toneHz, levelDB, kSeconds, rateHz);
        effect.process(sound);
        const ToneSpectrum spectrum(lastSecond(sound, rateHz), toneHz);
        const int largestHz = spectrum.largestInharmonicHz();
        const auto decibelsOfPower = [&](double power) { return 10.0 * std::log10(power / spectrum.tone()); };
        const double sumDB = decibelsOfPower(spectrum.inharmonics());
        std::printf("%g Hz, %dx, %d Hz at %g dBFS, Hot %g: %.1f dB, largest %.1f dB at %d Hz\n", rateHz,
                    factor, toneHz, levelDB, hot, sumDB, decibelsOfPower(spectrum.power(largestHz)),
                    largestHz);
        return sumDB;
    }

    void expectBelow(double floorDB, double rateHz, std::int32_t factor, double levelDB, double hot) {
        for (const int toneHz : kTonesHz) {
            EXPECT_LE(aliasesDB(rateHz, factor, toneHz, levelDB, hot), floorDB)
                << factor << "x, " << toneHz << " Hz at " << rateHz;
        }
    }
};

TEST_F(OversamplingAliasTest, AtAMediumLevelAndDrive) {
    expectBelow(-46.0, 48000.0, 2, -12.0, 0.4);
    expectBelow(-63.0, 48000.0, 4, -12.0, 0.4);
    expectBelow(-69.0, 48000.0, 8, -12.0, 0.4);
    expectBelow(-44.0, 44100.0, 2, -12.0, 0.4);
    expectBelow(-54.0, 44100.0, 4, -12.0, 0.4);
    expectBelow(-67.0, 44100.0, 8, -12.0, 0.4);
}

TEST_F(OversamplingAliasTest, AtFullScaleAndFullDrive) {
    expectBelow(-46.0, 48000.0, 2, 0.0, 1.0);
    expectBelow(-60.0, 48000.0, 4, 0.0, 1.0);
    expectBelow(-68.0, 48000.0, 8, 0.0, 1.0);
    expectBelow(-39.0, 44100.0, 2, 0.0, 1.0);
    expectBelow(-51.0, 44100.0, 4, 0.0, 1.0);
    expectBelow(-67.0, 44100.0, 8, 0.0, 1.0);
}

TEST_F(OversamplingAliasTest, AtTheUsualDrive) {
    constexpr double kUsualHot = 0.07;
    constexpr int kToneStepHz = 1000;
    for (int tone = 1; tone <= 19; ++tone) {
        // Beside the round frequency, under whose harmonics aliases would lie.
        const int toneHz = tone * kToneStepHz + 7;
        EXPECT_LE(aliasesDB(48000.0, 4, toneHz, -12.0, kUsualHot), -65.0) << toneHz;
        EXPECT_LE(aliasesDB(48000.0, 8, toneHz, -12.0, kUsualHot), -90.0) << toneHz;
    }
}

} // namespace
} // namespace varno::test
