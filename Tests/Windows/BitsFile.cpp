#include "Tests/Windows/BitsFile.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <stdexcept>

namespace varno::test {

namespace {

constexpr std::uint32_t kNumbers = 1U << 24U;

// From -1 to 1, without a function of a library: two parabolas, nearly a sine.
float tone(float phase) {
    const float half = phase < 0.5F ? phase : phase - 0.5F;
    const float hill = 16.0F * half * (0.5F - half);
    return phase < 0.5F ? hill : -hill;
}

// Samples that are put in at their frames.
constexpr float kBadSamples[] = {std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity(),
                                 3e30F,
                                 -1e38F,
                                 std::numeric_limits<float>::denorm_min(),
                                 -1e-40F};

} // namespace

std::uint32_t SameNumbers::next() {
    mState = mState * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>(mState >> 40U);
}

float SameNumbers::unit() {
    return static_cast<float>(next()) / static_cast<float>(kNumbers);
}

std::vector<BitsCase> bitsCases(std::uint32_t settings) {
    constexpr std::array kRatesHz = {48000.0, 44100.0, 96000.0, 16000.0};
    std::vector<BitsCase> cases;
    for (const std::int32_t channels : {1, 2}) {
        for (const std::int32_t factor : kBitsFactors) {
            for (std::uint32_t setting = 0; setting < settings; ++setting) {
                BitsCase next;
                next.seed = static_cast<std::uint32_t>(cases.size()) + 1;
                next.channels = channels;
                next.factor = factor;
                next.sampleRateHz = kRatesHz[setting % kRatesHz.size()];
                next.hasDefaults = setting == 0;
                next.name = std::to_string(channels) + "ch-" + std::to_string(factor) + "x-" +
                            std::to_string(static_cast<int>(next.sampleRateHz)) + "Hz-" +
                            std::to_string(next.seed);
                cases.push_back(next);
            }
        }
    }
    return cases;
}

std::vector<std::vector<float>> bitsInput(const BitsCase& bitsCase) {
    SameNumbers numbers(bitsCase.seed);
    std::vector<std::vector<float>> sound(static_cast<std::size_t>(bitsCase.channels));
    constexpr int kBeat = 2000;
    constexpr int kSwell = kBitsFrames / 2;
    constexpr int kSilence = kBitsFrames * 7 / 8;
    constexpr float kDecay = 0.998F;
    for (std::vector<float>& channel : sound) {
        const float step = 0.001F + numbers.unit() * 0.02F;
        float phase = 0.0F;
        float level = 0.0F;
        for (int frame = 0; frame < kBitsFrames; ++frame) {
            level = frame % kBeat == 0 ? 0.3F + numbers.unit() * 1.7F : level * kDecay;
            phase += step;
            phase = phase < 1.0F ? phase : phase - 1.0F;
            const float hiss = numbers.unit() * 2.0F - 1.0F;
            const float beats = level * (tone(phase) * 0.8F + hiss * 0.2F);
            const float swell = hiss * static_cast<float>(frame - kSwell) / static_cast<float>(kBitsFrames);
            const float loud = frame < kSwell ? beats : swell;
            channel.push_back(frame < kSilence ? loud : 0.0F);
        }
        for (const float bad : kBadSamples) {
            channel[numbers.below(kBitsFrames)] = bad;
        }
    }
    return sound;
}

std::vector<std::int32_t> bitsBuffers(const BitsCase& bitsCase) {
    SameNumbers numbers(bitsCase.seed + 1000);
    std::vector<std::int32_t> buffers;
    for (std::int32_t left = kBitsFrames; left > 0; left -= buffers.back()) {
        const auto frames = static_cast<std::int32_t>(numbers.below(kBitsMostFrames)) + 1;
        buffers.push_back(std::min(frames, left));
    }
    return buffers;
}

BitsFile::BitsFile(const char* path)
    : mFile(path, std::ios::binary) {
    if (!mFile) {
        throw std::runtime_error(std::string(path) + ": cannot be written");
    }
}

void BitsFile::add(std::string_view name, std::span<const std::byte> bytes) {
    mFile.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!mFile.flush()) {
        throw std::runtime_error("the output cannot be written");
    }
    std::printf("part %s %zu %zu\n", std::string(name).c_str(), mOffset, bytes.size());
    mOffset += bytes.size();
}

void BitsFile::add(std::string_view name, const std::vector<std::vector<float>>& sound) {
    std::vector<float> samples;
    for (const std::vector<float>& channel : sound) {
        samples.insert(samples.end(), channel.begin(), channel.end());
    }
    add(name, std::as_bytes(std::span(samples)));
}

void BitsFile::add(std::string_view name, const std::string& text) {
    add(name, std::as_bytes(std::span(text)));
}

} // namespace varno::test
