#include "JackPorts.h"

#include "LiveBackend.h"

#include <algorithm>

namespace varno {

std::string portName(PortDirection direction, int channels, int channel) {
    std::string name = direction == PortDirection::kInput ? "in" : "out";
    if (channels == 1) {
        return name;
    }
    return name + (channel == 0 ? "_l" : "_r");
}

std::vector<std::pair<int, int>> portPairs(PortDirection direction, int channels, int system) {
    std::vector<std::pair<int, int>> pairs;
    if (channels < 1 || system < 1) {
        return pairs;
    }
    const bool isOutput = direction == PortDirection::kOutput;
    const int count = isOutput ? std::max(channels, std::min(system, kMostLiveChannels)) : channels;
    for (int i = 0; i < count; ++i) {
        pairs.emplace_back(std::min(i, channels - 1), std::min(i, system - 1));
    }
    return pairs;
}

} // namespace varno
