/// A small stereo effect for a CLAP binary and an LV2 bundle, sound or with the fault that the environment
/// names.
#ifndef VARNO_TESTS_APPS_VARNO_VALIDATE_FORMATS_FAULTYGAIN_H
#define VARNO_TESTS_APPS_VARNO_VALIDATE_FORMATS_FAULTYGAIN_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace varno::fixture {

/// Whether the fault of this name is in VARNO_FIXTURE_FAULT.
bool isPlanted(const char* fault);

/// Where its parameters are in values.
enum GainParameter : std::size_t {
    kGain,   ///< 0 to 1.
    kMode,   ///< 0, 1 or 2.
    kBypass, ///< 0 or 1.
    kGainParameterCount,
};

/// Smoothing of the input, a gain, and a delay of kLatency frames.
class FaultyGain {
public:
    static constexpr std::size_t kLatency = 8;
    static constexpr std::size_t kChannels = 2;
    /// Size of a state, in bytes.
    static constexpr std::size_t kStateSize = 16;
    using State = std::array<std::byte, kStateSize>;

    explicit FaultyGain(double rateHz)
        : mRateHz(rateHz) {}

    std::array<float, kGainParameterCount> values = {0.5F, 0.0F, 0.0F};

    void reset();
    void process(const float* const* inputs, float* const* outputs, std::uint32_t frames);
    std::uint32_t latency() const;
    State save() const;
    /// What is not refused is taken whole.
    bool restore(std::span<const std::byte> state);
    /// To be called by both formats where they refuse a state.
    static void refuse();

private:
    float smoothed(std::size_t channel, float input);
    float delayed(std::size_t channel, float input);

    double mRateHz;
    std::optional<float> mLastGain;
    std::array<float, kChannels> mSmooth{};
    std::array<std::array<float, kLatency>, kChannels> mDelay{};
    std::array<std::size_t, kChannels> mPosition{};
};

/// A gain as people see it: percent with a decimal. Of a mode or a bypass, its number.
std::string gainText(std::size_t parameter, double value);
/// Nothing for a text that is no value.
std::optional<double> gainValue(std::size_t parameter, const std::string& text);

} // namespace varno::fixture

#endif
