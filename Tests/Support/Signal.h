/// Audio of some channels, all of one length, and exact comparison of it.
#ifndef VARNO_TESTS_SUPPORT_SIGNAL_H
#define VARNO_TESTS_SUPPORT_SIGNAL_H

#include <cstddef>
#include <string>
#include <vector>

namespace varno::test {

/// Samples of each channel.
using Signal = std::vector<std::vector<float>>;

/// Frames of a signal; 0 without channels.
inline std::size_t framesOf(const Signal& signal) {
    return signal.empty() ? 0 : signal.front().size();
}

/// Where two runs of floats first differ in their bits, as text; empty where they do not.
std::string firstDifference(const std::vector<float>& expected, const std::vector<float>& found);

/// Where two signals first differ in their bits, as text; empty where they do not.
std::string firstDifference(const Signal& expected, const Signal& found);

/// The bits of a float, for messages and exact comparison.
std::string bitsText(float value);

} // namespace varno::test

#endif
