#ifndef VARNO_AUDIOFILE_OUTPUTFORMAT_H
#define VARNO_AUDIOFILE_OUTPUTFORMAT_H

#include "AudioFile/Format.h"

#include <cstdint>
#include <optional>
#include <string>

namespace varno {

/// Most bytes of samples in a RIFF file, whose sizes have 32 bits; 16 MiB are left for other chunks. Longer
/// WAV output becomes RF64.
inline constexpr std::int64_t kMostRiffSampleBytes = (std::int64_t{1} << 32) - (std::int64_t{1} << 24);

/// The format of an output file, and why it is not the input's.
struct OutputFormat {
    AudioFormat format;
    std::string note; ///< one line for the user where the input's format could not be kept, else empty
};

/// Chooses the container by the extension of `outputPath` (case does not matter); "-" and devices get WAV,
/// which becomes RF64 beyond kMostRiffSampleBytes. The sample format is `asked`, else the input's, else the
/// nearest that the container holds, without loss if possible.
/// @param asked the sample format that the user requested; messages name it by "--format"
/// @param frames of the output, at least the input's; or kUnknownFrames, for pipes only
/// @throws UnsupportedFormat where the extension is missing or unknown, or the container cannot hold the
///         requested format, the channel count, the sample rate or that many frames
OutputFormat chooseOutputFormat(const AudioFormat& input, const std::string& outputPath,
                                std::optional<SampleFormat> asked, std::int64_t frames);

} // namespace varno

#endif
