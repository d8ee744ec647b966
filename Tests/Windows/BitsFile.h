/// The cases that are rendered on two systems, and the file of what they gave, to be compared byte by byte.
#ifndef VARNO_TESTS_WINDOWS_BITSFILE_H
#define VARNO_TESTS_WINDOWS_BITSFILE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varno::test {

/// Numbers that are the same on every system: no function of a library decides about them.
class SameNumbers {
public:
    explicit SameNumbers(std::uint32_t seed)
        : mState(seed) {}

    /// 0 to 2^24 - 1.
    std::uint32_t next();
    /// 0 to 1, of steps that a float holds.
    float unit();
    /// 0 to count - 1.
    std::uint32_t below(std::uint32_t count) { return next() % count; }

private:
    std::uint64_t mState;
};

/// What is rendered: mono and stereo, at each factor of oversampling, with several settings and rates.
struct BitsCase {
    std::string name;
    std::uint32_t seed = 0;
    std::int32_t channels = 1;
    std::int32_t factor = 1;
    double sampleRateHz = 48000.0;
    bool hasDefaults = false; ///< The settings are the defaults, else those of the seed.
};

inline constexpr std::array kBitsFactors = {1, 2, 4, 8};
inline constexpr std::int32_t kBitsFrames = 16000;
/// Of one buffer.
inline constexpr std::int32_t kBitsMostFrames = 512;

/// All cases. @param settings how many settings per factor and number of channels
std::vector<BitsCase> bitsCases(std::uint32_t settings);

/// The sound of a case by channels: beats of decaying tones and noise, a swell of noise, silence, and samples
/// that are not usable or too small for a normal number.
std::vector<std::vector<float>> bitsInput(const BitsCase& bitsCase);

/// The lengths of the buffers that a case is processed in; together kBitsFrames.
std::vector<std::int32_t> bitsBuffers(const BitsCase& bitsCase);

/// Bytes in the order in which they were made. The rows that it prints on standard output name them:
/// "part NAME OFFSET BYTES".
class BitsFile {
public:
    /// @throws std::runtime_error where it cannot be written, as add() does
    explicit BitsFile(const char* path);

    void add(std::string_view name, std::span<const std::byte> bytes);
    void add(std::string_view name, const std::vector<std::vector<float>>& sound);
    void add(std::string_view name, const std::string& text);

private:
    std::ofstream mFile;
    std::size_t mOffset = 0;
};

} // namespace varno::test

#endif
