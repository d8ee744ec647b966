/// The ways in which hosts and sound systems have the effect process sound.
#ifndef VARNO_TESTS_REALTIME_AUDIOCLIENT_H
#define VARNO_TESTS_REALTIME_AUDIOCLIENT_H

#include "Tests/Support/Signal.h"

#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <string>

namespace varno::test {

/// The effect with two channels, called block by block. Sound and values come from the random numbers alone,
/// so that equal ones give equal output where no other thread takes part.
class AudioClient {
public:
    static constexpr int kLongestBlock = 512;

    AudioClient();
    AudioClient(const AudioClient&) = delete;
    AudioClient& operator=(const AudioClient&) = delete;
    virtual ~AudioClient() = default;

    /// Gives the next block, of up to kLongestBlock frames, its input and its values. Makes no system call.
    /// [audio]
    virtual void prepare(int frames, std::mt19937& ioRandom) = 0;
    /// The block itself: what a host or a sound system calls. [audio]
    virtual void process(int frames) = 0;
    /// One thing that a host does beside it: values, presets, states, qualities, meters. [main]
    virtual void disturb(std::mt19937& ioRandom) = 0;
    /// The samples of a channel that the last block has written. [audio]
    virtual std::span<const float> output(std::size_t channel, int frames) const;
    /// The contracts that were broken, each with a line end. [main]
    virtual std::string complaints() { return {}; }

protected:
    static constexpr double kRateHz = 48000.0;
    /// How many blocks lie between two changes of quality on the average: a change takes 20 ms.
    static constexpr unsigned kBlocksPerQuality = 64;

    /// A normalized value and a factor of oversampling at random.
    static double normalizedFrom(std::mt19937& ioRandom);
    static std::int32_t factorFrom(std::mt19937& ioRandom);

    /// Moves on in the input, and points to it.
    void nextInput(int frames);

    const float* mInputs[2] = {};
    float* mOutputs[2] = {};

private:
    Signal mSound;
    Signal mOutput;
    std::size_t mPosition = 0;
};

/// One of the ways.
struct AudioClientEntry {
    const char* name; ///< In names of tests.
    std::unique_ptr<AudioClient> (*make)();
};

/// Host library, LV2, CLAP, JACK and RtAudio.
std::span<const AudioClientEntry> audioClients();

} // namespace varno::test

#endif
