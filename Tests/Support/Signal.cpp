#include "Tests/Support/Signal.h"

#include <bit>
#include <cstdint>
#include <iomanip>
#include <sstream>

namespace varno::test {

std::string bitsText(float value) {
    std::ostringstream text;
    text << std::setprecision(9) << value << " (0x" << std::hex << std::setw(8) << std::setfill('0')
         << std::bit_cast<std::uint32_t>(value) << ')';
    return text.str();
}

std::string firstDifference(const std::vector<float>& expected, const std::vector<float>& found) {
    if (expected.size() != found.size()) {
        return "lengths " + std::to_string(expected.size()) + " and " + std::to_string(found.size());
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (std::bit_cast<std::uint32_t>(expected[i]) != std::bit_cast<std::uint32_t>(found[i])) {
            return "index " + std::to_string(i) + ": expected " + bitsText(expected[i]) + ", found " +
                   bitsText(found[i]);
        }
    }
    return {};
}

std::string firstDifference(const Signal& expected, const Signal& found) {
    if (expected.size() != found.size()) {
        return "channels " + std::to_string(expected.size()) + " and " + std::to_string(found.size());
    }
    for (std::size_t channel = 0; channel < expected.size(); ++channel) {
        const std::string difference = firstDifference(expected[channel], found[channel]);
        if (!difference.empty()) {
            return "channel " + std::to_string(channel) + ", " + difference;
        }
    }
    return {};
}

} // namespace varno::test
