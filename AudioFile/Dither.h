#ifndef VARNO_AUDIOFILE_DITHER_H
#define VARNO_AUDIOFILE_DITHER_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace varno {

/// What is added before an output is rounded to fewer bits than its input has.
enum class Dither {
    kNone,
    kTpdf, // noise of triangular distribution, two steps wide: the error keeps no trace of the signal
};

/// The dither that `--dither` names: tpdf or none; nothing for any other text.
std::optional<Dither> ditherFromOption(std::string_view text);

/// Noise of triangular distribution over -1 to 1 steps of the output, mean 0. Every run gives the same
/// sequence.
class TpdfNoise {
public:
    /// @param channel index, so that channels get unlike sequences
    explicit TpdfNoise(std::uint64_t channel);

    /// The next value, in steps.
    double next();

private:
    double uniform(); // 0 to 1, 1 excluded

    std::uint64_t mState;
};

} // namespace varno

#endif
