#ifndef VARNO_AUDIOFILE_OUTPUTFORMAT_H
#define VARNO_AUDIOFILE_OUTPUTFORMAT_H

#include "AudioFile/Format.h"

#include <optional>
#include <string>

namespace varno {

/// Above this many bytes of samples a RIFF file, whose sizes have 32 bits, may not hold them beside its other
/// chunks (of which 16 MiB are allowed for); WAV output becomes RF64.
inline constexpr std::int64_t kMostRiffSampleBytes = (std::int64_t{1} << 32) - (std::int64_t{1} << 24);

/// The format of an output file, and why it is not the input's.
struct OutputFormat {
    AudioFormat format;
    std::string note; // one line for the user where the input's sample format could not be kept, else empty
};

/// The container is told by the extension of `outputPath` (case does not matter); "-" and devices get WAV,
/// which becomes RF64 beyond kMostRiffSampleBytes. The sample format is `asked`, else the input's, else the
/// nearest that the container holds without loss where there is one.
/// @param frames of the output, at least the input's
/// @throws UsageError where the extension is missing or unknown, or the container cannot hold the asked
/// format, the
///         channel count, the sample rate or that many frames
OutputFormat chooseOutputFormat(const AudioFormat& input, const std::string& outputPath,
                                std::optional<SampleFormat> asked, std::int64_t frames);

} // namespace varno

#endif
