#ifndef VARNO_APPS_VARNO_SESSION_LOOPPLAYER_H
#define VARNO_APPS_VARNO_SESSION_LOOPPLAYER_H

#include "AudioFile/Reader.h"
#include "Host/Bypass.h"
#include "Host/Instance.h"
#include "Session/LiveBackend.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

namespace varno {

/// Audio that starts again at its end, held in memory.
class AudioLoop {
public:
    /// Reads a file to its end.
    /// @throws FileError where it cannot be decoded; WorkError where it does not fit kMostSamples
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

    /// Of all channels together: 1 GiB, three quarters of an hour of stereo at 48 kHz.
    static constexpr std::size_t kMostSamples = std::size_t{1} << 28;

private:
    std::vector<std::vector<float>> mSamples;
    std::size_t mNext = 0;
};

/// A loop processed by an effect, from which a player takes its blocks.
class EffectLoop {
public:
    /// @param effect of as many channels; outlives this object, nothing else processes it
    EffectLoop(Oversampling& effect, AudioLoop loop)
        : mBypass(effect),
          mLoop(std::move(loop)) {}

    Bypass& bypass() noexcept { return mBypass; }
    const Bypass& bypass() const noexcept { return mBypass; }
    /// Writes the next frames to one pointer per channel. No lock, no allocation, no system call, no
    /// exception. [audio]
    void pull(float* const* channels, int frames) noexcept {
        mLoop.read(channels, frames);
        mBypass.process(channels, channels, frames);
    }

private:
    Bypass mBypass;
    AudioLoop mLoop;
};

/// The clock of a player. Tests have one of their own.
class PlayerClock {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~PlayerClock() = default;
    virtual TimePoint now() = 0;
    /// Returns at that time; at once if it has passed.
    virtual void sleepUntil(TimePoint time) = 0;
};

/// Writes the next frames to one pointer per channel; real-time and without exceptions. [audio]
using AudioPull = std::function<void(float* const* channels, int frames)>;

/// The form in which a player requests audio.
struct PlayerFormat {
    double rateHz = kDefaultSampleRateHz;
    int channels = 2;
    int blockFrames = 512;
};

/// When each block is due. Blocks are due at whole multiples of their length from the start, so that rounding
/// errors do not accumulate.
class BlockTimes {
public:
    using TimePoint = PlayerClock::TimePoint;

    BlockTimes(const PlayerFormat& format, TimePoint start)
        : mFormat(format),
          mStart(start) {}

    /// When the block after the last counted one is due.
    TimePoint due() const;
    /// Counts a block that was played. One that comes later than kLongestLag, as after the machine slept,
    /// restarts the count: missed blocks are not played all at once.
    void countBlock(TimePoint now);

    static constexpr std::chrono::milliseconds kLongestLag{200};

private:
    PlayerFormat mFormat;
    TimePoint mStart;
    std::int64_t mBlocks = 0;
};

/// Requests blocks in real time, by the clock, until `shallStop` is set, and discards them. Allocates once,
/// at the start. [audio]
void playPaced(const PlayerFormat& format, const AudioPull& pull, PlayerClock& clock,
               const std::atomic<bool>& shallStop);

/// Plays without a sound card: a thread of its own requests the blocks in real time, by the system's clock,
/// from construction to destruction. Made and destroyed by one thread. [main]
class ClockedPlayer {
public:
    /// @param pull called on the player's thread until this object is destroyed
    /// @throws std::system_error where no thread can be started
    ClockedPlayer(const PlayerFormat& format, AudioPull pull);
    ClockedPlayer(const ClockedPlayer&) = delete;
    ClockedPlayer& operator=(const ClockedPlayer&) = delete;
    /// Returns once the last block is done.
    ~ClockedPlayer();

private:
    std::atomic<bool> mShallStop{false};
    std::thread mThread;
};

} // namespace varno

#endif
