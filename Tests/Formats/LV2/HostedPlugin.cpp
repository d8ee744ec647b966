#include "Tests/Formats/LV2/HostedPlugin.h"

#include "Tests/Formats/LV2/FrozenSymbols.h"

#include <algorithm>
#include <stdexcept>

namespace varno::test {

namespace {

// Those of the parameters whose default is not 0, and that of "enabled".
const PortValues kDefaults = {{"gain", 0.5F}, {"atk", 0.5F},   {"rls", 0.5F},    {"volume", 0.5F},
                              {"hot", 0.07F}, {"ratio", 0.5F}, {"enabled", 1.0F}};

} // namespace

HostedPlugin::HostedPlugin(std::size_t channels, double sampleRateHz)
    : mDescriptor(lv2_descriptor(channels == 1 ? 0 : 1)),
      mChannels(channels),
      mSymbols(frozenSymbols(channels)),
      mValues(mSymbols.size()),
      mHandle(mDescriptor->instantiate(mDescriptor, sampleRateHz, "", nullptr)) {
    if (mHandle == nullptr) {
        throw std::runtime_error("the plug-in was not made");
    }
    for (std::size_t index = 2 * channels; index < mSymbols.size(); ++index) {
        mDescriptor->connect_port(mHandle, static_cast<std::uint32_t>(index), &mValues[index]);
    }
    set(kDefaults);
    activate();
}

HostedPlugin::~HostedPlugin() {
    if (mDescriptor->deactivate != nullptr) {
        mDescriptor->deactivate(mHandle);
    }
    mDescriptor->cleanup(mHandle);
}

std::uint32_t HostedPlugin::indexOf(const std::string& symbol) const {
    const auto found = std::ranges::find(mSymbols, symbol);
    if (found == mSymbols.end()) {
        throw std::out_of_range("no port " + symbol);
    }
    return static_cast<std::uint32_t>(found - mSymbols.begin());
}

float& HostedPlugin::port(const std::string& symbol) {
    return mValues[indexOf(symbol)];
}

void HostedPlugin::set(const PortValues& values) {
    for (const auto& [symbol, value] : values) {
        port(symbol) = value;
    }
}

void HostedPlugin::connect(const std::string& symbol, void* data) {
    mDescriptor->connect_port(mHandle, indexOf(symbol), data);
}

void HostedPlugin::process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    for (std::size_t channel = 0; channel < mChannels; ++channel) {
        const auto input = static_cast<std::uint32_t>(channel);
        mDescriptor->connect_port(mHandle, input, const_cast<float*>(inputs[channel]));
        mDescriptor->connect_port(mHandle, input + static_cast<std::uint32_t>(mChannels), outputs[channel]);
    }
    run(static_cast<std::uint32_t>(std::max(frames, 0)));
}

BufferProcessor HostedPlugin::processor() {
    return [this](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        process(inputs, outputs, frames);
    };
}

} // namespace varno::test
