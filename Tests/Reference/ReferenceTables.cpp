#include "Tests/Reference/ReferenceTables.h"

#include <cmath>
#include <cstddef>

namespace varno::reference {

const std::array<float, 10001> kLevelTable = [] {
    const double step = 0.0015850418F; // the single-precision step, widened
    std::array<float, 10001> table{};
    for (std::size_t i = 0; i <= 9998; ++i) {
        table[i] = static_cast<float>(20.0 * std::log10(0.0001 + static_cast<double>(i) * step));
    }
    table[9999] = 24.0F;
    table[10000] = 24.0F;
    return table;
}();

const std::array<float, 10001> kGainTable = [] {
    std::array<float, 10001> table{};
    for (std::size_t i = 0; i <= 9999; ++i) {
        table[i] =
            static_cast<float>(std::pow(10.0, (-80.0 + static_cast<double>(i) * 104.0 / 9999.0) / 20.0));
    }
    table[10000] = table[9999];
    return table;
}();

} // namespace varno::reference
