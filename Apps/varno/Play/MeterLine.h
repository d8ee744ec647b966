#ifndef VARNO_APPS_VARNO_PLAY_METERLINE_H
#define VARNO_APPS_VARNO_PLAY_METERLINE_H

#include "Host/Instance.h"

#include <string>
#include <vector>

namespace varno {

/// The line in the terminal about a running effect.
struct MeterLine {
    struct Level {
        std::string label;   ///< "in".
        std::string levelDB; ///< "-12.3", "-inf".
    };

    std::vector<Level> levels;
    std::string parameter; ///< Name and value of the chosen one.
    bool isBypassed = false;
    int overruns = 0;

    /// The line. @param columns most characters; what does not fit is left out at the end
    std::string text(std::size_t columns) const;
};

/// The first meter of each kind that the effect describes, in the order of its taps: input and output against
/// full scale, gain reduction in dB.
std::vector<MeterLine::Level> meterLevels(const Instance& instance);

/// A linear level in dB with one decimal, "-inf" for silence.
std::string levelTextDB(double linear);

} // namespace varno

#endif
