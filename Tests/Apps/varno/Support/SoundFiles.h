#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_SOUNDFILES_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_SOUNDFILES_H

#include "AudioFile/OutputFormat.h"
#include "AudioFile/Reader.h"
#include "AudioFile/Writer.h"

#include <cstdint>
#include <optional>
#include <sndfile.h>
#include <string>
#include <vector>

namespace varno::test {

/// Formats as libsndfile numbers them.
inline constexpr int kWav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
inline constexpr int kWavFloat = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

/// Interleaved samples as libsndfile, the independent reference, reads and writes them: integers in the
/// uppermost bits of 32, floating point at full scale +-1.
struct Sound {
    int format = 0; // libsndfile's number
    int channels = 1;
    int rateHz = 48'000;
    std::vector<std::int32_t> integers; // or reals
    std::vector<double> reals;
};

void writeSound(const std::string& path, const Sound& sound);
Sound readIntegers(const std::string& path);
Sound readReals(const std::string& path);

/// Integers of `bits` bits in the uppermost of 32: both ends of the range, the values around zero, and noise.
std::vector<std::int32_t> testIntegers(int bits, std::size_t count);

/// Noise within +-1 at double precision.
std::vector<double> testReals(std::size_t count);

/// Reads and writes as a render does whose effect leaves every sample alone.
struct Copy {
    std::optional<SampleFormat> format = std::nullopt;
    AudioWriter::Options options = {};
    int blockFrames = 512;

    struct Result {
        std::string note;
        std::int64_t clipped = 0;
        std::vector<std::string> leftOut; // the warnings, of files named IN and OUT
    };
    Result run(const std::string& input, const std::string& output) const;
};

/// Runs a shell command. @return what it printed; the test fails where it does
std::string shell(const std::string& command);

} // namespace varno::test

#endif
