#ifndef VARNO_APPS_VARNO_PLAYER_AUDIOLOOP_H
#define VARNO_APPS_VARNO_PLAYER_AUDIOLOOP_H

#include "AudioFile/Reader.h"

#include <cstddef>
#include <vector>

namespace varno {

/// Audio that starts again at its end, held in memory.
class AudioLoop {
public:
    /// Reads a file to its end.
    /// @throws AudioFileError where it cannot be decoded; WorkError where it does not fit kMostSamples
    static AudioLoop of(AudioReader& reader);
    /// Silence. @param channels at least 1
    static AudioLoop silence(int channels);
    /// @param samples one row per channel, at least one, of the same length, at least 1
    explicit AudioLoop(std::vector<std::vector<float>> samples);

    /// The same sound from its start at another sample rate. @throws WorkError where it does not fit
    /// kMostSamples
    AudioLoop resampled(double fromHz, double toHz) const;

    int channels() const { return static_cast<int>(mSamples.size()); }
    /// Writes the next frames to one pointer per channel. No lock, no allocation, no system call. [audio]
    void read(float* const* channels, int frames) noexcept;

    /// All channels together, 1 GiB of them: three quarters of an hour of stereo at 48 kHz.
    static constexpr std::size_t kMostSamples = std::size_t{1} << 28;

private:
    std::vector<std::vector<float>> mSamples;
    std::size_t mNext = 0;
};

} // namespace varno

#endif
