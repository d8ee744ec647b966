#include "Measure/Spectrum.h"

#include "Surround/Settings/NumberText.h"

#include <kissfft/kissfft.hh>

#include <algorithm>
#include <cmath>
#include <complex>

namespace varno {
namespace {

std::vector<double> powersOf(std::span<const float> second) {
    std::vector<std::complex<double>> signal(second.begin(), second.end());
    std::vector<std::complex<double>> transformed(signal.size());
    kissfft<double>(signal.size(), false).transform(signal.data(), transformed.data());
    std::vector<double> powers(signal.size() / 2 + 1);
    const double scale = 1.0 / static_cast<double>(signal.size());
    for (std::size_t bin = 0; bin < powers.size(); ++bin) {
        // Half of a sine's amplitude lies at the negative frequency.
        powers[bin] = 2.0 * std::norm(transformed[bin] * scale);
    }
    return powers;
}

} // namespace

ToneSpectrum::ToneSpectrum(std::span<const float> second, int toneHz)
    : mToneHz(toneHz),
      mPowers(powersOf(second)) {
}

double powerDecibels(double ratio) {
    return decibels(std::sqrt(ratio));
}

double ToneSpectrum::harmonics() const {
    double sum = 0.0;
    for (std::size_t bin = 2 * static_cast<std::size_t>(mToneHz); bin < mPowers.size();
         bin += static_cast<std::size_t>(mToneHz)) {
        sum += mPowers[bin];
    }
    return sum;
}

template<class Receive>
void ToneSpectrum::forEachInharmonic(Receive receive) const {
    const int end = std::min(kHighestAudibleHz + 1, static_cast<int>(mPowers.size()));
    for (int frequencyHz = kLowestAudibleHz; frequencyHz < end; ++frequencyHz) {
        if (frequencyHz % mToneHz != 0) {
            receive(frequencyHz);
        }
    }
}

double ToneSpectrum::inharmonics() const {
    double sum = 0.0;
    forEachInharmonic([&](int frequencyHz) { sum += power(frequencyHz); });
    return sum;
}

int ToneSpectrum::largestInharmonicHz() const {
    int largest = kLowestAudibleHz;
    forEachInharmonic([&](int frequencyHz) {
        if (power(frequencyHz) > power(largest)) {
            largest = frequencyHz;
        }
    });
    return largest;
}

} // namespace varno
