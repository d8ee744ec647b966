#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <algorithm>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace varno::fixture {
namespace {

constexpr std::uint32_t kMark = 0x4E494147;
constexpr float kHuge = 1e30F;
constexpr float kTiny = 1e-20F;

// What all instances share, as none should.
float gShared = 0.0F;

// Some fifty times as long as a sample otherwise takes: far beyond what is found.
void burnTime() {
    volatile float sum = 0.0F;
    for (int i = 0; i < 600; ++i) {
        sum = sum + 1.0F;
    }
}

} // namespace

bool isPlanted(const char* fault) {
    const char* const planted = std::getenv("VARNO_FIXTURE_FAULT");
    return planted != nullptr && std::strcmp(planted, fault) == 0;
}

void FaultyGain::reset() {
    if (!isPlanted("reset-keeps-sound")) {
        mSmooth = {};
        mDelay = {};
        mPosition = {};
    }
}

std::uint32_t FaultyGain::latency() const {
    return isPlanted("wrong-latency") ? kLatency - 1 : kLatency;
}

float FaultyGain::smoothed(std::size_t channel, float input) {
    const bool isTaken = std::fabs(input) <= kHuge || isPlanted("keeps-bad-samples");
    float& smooth = isPlanted("shares-state") ? gShared : mSmooth[channel];
    smooth += 0.5F * ((isTaken ? input : 0.0F) - smooth);
    if (std::fabs(smooth) < kTiny && !isPlanted("subnormal-tail")) {
        smooth = 0.0F;
    }
    return smooth;
}

float FaultyGain::delayed(std::size_t channel, float input) {
    std::size_t& position = mPosition[channel];
    const float output = mDelay[channel][position];
    mDelay[channel][position] = input;
    position = (position + 1) % kLatency;
    return output;
}

void FaultyGain::process(const float* const* inputs, float* const* outputs, std::uint32_t frames) {
    if (isPlanted("needs-own-outputs")) {
        std::fill_n(outputs[0], frames, 0.0F);
    }
    // Whether a fault is planted is looked up once for each buffer.
    const bool scalesBypass = isPlanted("bypass-scales");
    const bool isSlowInSilence = isPlanted("slow-silence");
    const bool isBadHere = (isPlanted("bad-corner") && values[kGain] >= 1.0F && values[kMode] >= 2.0F) ||
                           (isPlanted("bad-rate") && mRateHz > 100000.0);
    const bool dependsOnBuffers = isPlanted("depends-on-buffers");
    for (std::uint32_t frame = 0; frame < frames; ++frame) {
        const std::array<float, kChannels> in = {inputs[0][frame], inputs[1][frame]};
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            float sound = smoothed(channel, in[channel]) * values[kGain] * (1.0F + values[kMode]);
            if (dependsOnBuffers && frame == 0) {
                sound *= 0.5F;
            }
            if (isBadHere) {
                sound = std::numeric_limits<float>::quiet_NaN();
            }
            if (values[kBypass] >= 0.5F) {
                sound = scalesBypass ? 0.5F * in[channel] : in[channel];
            }
            if (isSlowInSilence && in[channel] == 0.0F) {
                burnTime();
            }
            outputs[channel][frame] = delayed(channel, sound);
        }
    }
    if (isPlanted("clicks") && frames > 0 && mLastGain.value_or(values[kGain]) != values[kGain]) {
        outputs[0][0] += 8.0F;
    }
    mLastGain = values[kGain];
    if (isPlanted("writes-beyond")) {
        outputs[1][frames] = 0.0F;
    }
    // As a loop by four does that forgets the rest.
    if (isPlanted("leaves-a-sample") && frames > 256 && frames % 4 == 1) {
        std::uint32_t unwritten = 0x7FC5A5A5U;
        std::memcpy(&outputs[0][frames - 1], &unwritten, sizeof unwritten);
    }
    if (isPlanted("changes-input") && frames > 0) {
        const_cast<float*>(inputs[0])[0] += 1.0F;
    }
    if (isPlanted("changes-rounding")) {
        std::fesetround(FE_UPWARD);
    }
}

FaultyGain::State FaultyGain::save() const {
    State state{};
    std::memcpy(state.data(), &kMark, sizeof kMark);
    std::array<float, kGainParameterCount> kept = values;
    if (isPlanted("state-forgets")) {
        kept[kMode] = 0.0F;
    }
    std::memcpy(state.data() + sizeof kMark, kept.data(), sizeof kept);
    return state;
}

bool FaultyGain::restore(std::span<const std::byte> state) {
    std::uint32_t mark = 0;
    std::array<float, kGainParameterCount> read{};
    const bool isWhole = state.size() == kStateSize;
    if (isPlanted("state-keeps-memory")) {
        // As of a table that only grows; a later call cannot free it.
        static std::byte* last = nullptr;
        last = new std::byte[262144 + (last == nullptr ? 0U : 1U)];
        *last = std::byte{1};
    }
    if (isPlanted("state-crashes") && !state.empty() && state.size() < sizeof mark) {
        std::abort();
    }
    if (isWhole) {
        std::memcpy(&mark, state.data(), sizeof mark);
        std::memcpy(read.data(), state.data() + sizeof mark, sizeof read);
    }
    const bool isGood =
        std::ranges::all_of(read, [](float value) { return value >= 0.0F && value <= 2.0F; }) &&
        read[kGain] <= 1.0F && read[kBypass] <= 1.0F;
    const bool isMarked = mark == kMark || isPlanted("takes-foreign-states");
    if (!isWhole || !isMarked || !isGood) {
        if (isPlanted("refusal-changes")) {
            values[kGain] = values[kGain] < 0.5F ? 1.0F : 0.0F;
        }
        if (!isPlanted("state-out-of-range") || !isWhole) {
            return false;
        }
    }
    values = read;
    return true;
}

void FaultyGain::refuse() {
    if (isPlanted("loses-foreign-states")) {
        // A call of the library's, which no compiler leaves out.
        (void)::strdup("lost with each state of another plug-in");
    }
}

std::string gainText(std::size_t parameter, double value) {
    std::array<char, 64> text{};
    if (parameter != kGain) {
        std::snprintf(text.data(), text.size(), "%d", static_cast<int>(std::lround(value)));
    } else if (isPlanted("text-of-locale")) {
        // With the locale's decimal sign, which the reading does not know.
        std::snprintf(text.data(), text.size(), "%.1f", 100.0 * value);
    } else {
        const auto tenths = std::lround(1000.0 * value);
        std::snprintf(text.data(), text.size(), "%ld.%ld", tenths / 10, tenths % 10);
    }
    return text.data();
}

std::optional<double> gainValue(std::size_t parameter, const std::string& text) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    if (isPlanted("reads-beyond-range")) {
        return number;
    }
    const double most = parameter == kGain ? 1.0 : parameter == kMode ? 2.0 : 1.0;
    return std::clamp(parameter == kGain ? number / 100.0 : number, 0.0, most);
}

} // namespace varno::fixture
