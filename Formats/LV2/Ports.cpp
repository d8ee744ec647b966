#include "LV2/Ports.h"

#include "Host/Oversampling/Oversampling.h"
#include "LV2/PortTexts.h"

#include <algorithm>
#include <array>

namespace varno {

namespace {

// Adds ports one after the other.
class PortList {
public:
    void add(std::string symbol, PortKind kind, std::uint32_t item = 0, std::string parameterID = {}) {
        mPorts.push_back({static_cast<std::uint32_t>(mPorts.size()), std::move(symbol), kind, item,
                          std::move(parameterID)});
    }

    void addAudio(const std::string& direction, PortKind kind, std::int32_t channels) {
        if (channels == 1) {
            add(direction, kind);
            return;
        }
        static constexpr std::array kSides = {"_l", "_r"};
        for (std::uint32_t channel = 0; channel < kSides.size(); ++channel) {
            add(direction + kSides[channel], kind, channel);
        }
    }

    std::vector<PortInfo> take() { return std::move(mPorts); }

private:
    std::vector<PortInfo> mPorts;
};

} // namespace

std::vector<PortInfo> portsOf(const Instance& instance) {
    PortList list;
    list.addAudio("in", PortKind::kAudioIn, instance.variant().inputChannels());
    list.addAudio("out", PortKind::kAudioOut, instance.variant().outputChannels());
    for (const ParameterInfo& parameter : instance.parameters()) {
        if (!parameter.isMasterBypass) {
            list.add(portText(kParameterPorts, parameter.id).symbol, PortKind::kParameter,
                     static_cast<std::uint32_t>(parameter.index), parameter.id);
        }
    }
    list.add("enabled", PortKind::kEnabled);
    const std::vector<MeterDescription>& meters = instance.effect().meters;
    for (std::uint32_t tap = 0; tap < meters.size(); ++tap) {
        list.add(portText(kMeterPorts, meters[tap].name).symbol, PortKind::kMeter, tap);
    }
    list.add("latency", PortKind::kLatency);
    list.add("quality", PortKind::kQuality);
    return list.take();
}

std::int32_t factorOfPort(float value) noexcept {
    std::int32_t chosen = kOversamplingFactors.front();
    for (const std::int32_t factor : kOversamplingFactors) {
        chosen = static_cast<float>(factor) <= value ? factor : chosen;
    }
    return chosen;
}

const PortInfo* portWithSymbol(std::span<const PortInfo> ports, std::string_view symbol) {
    const auto found = std::ranges::find(ports, symbol, &PortInfo::symbol);
    return found == ports.end() ? nullptr : &*found;
}

const PortInfo* portOfParameter(std::span<const PortInfo> ports, std::string_view parameterID) {
    const auto found = std::ranges::find(ports, parameterID, &PortInfo::parameterID);
    return parameterID.empty() || found == ports.end() ? nullptr : &*found;
}

} // namespace varno
