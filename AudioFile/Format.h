#ifndef VARNO_AUDIOFILE_FORMAT_H
#define VARNO_AUDIOFILE_FORMAT_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace varno {

enum class Container { kWav, kRf64, kW64, kAiff, kCaf, kAu, kFlac, kOgg, kOther };

/// Name for messages: "WAV", "AIFF", ...
const char* containerName(Container container);

/// How a file stores one sample.
enum class SampleFormat {
    kPcm8,  ///< signed or unsigned, as the container requires
    kPcm16, ///< signed integers
    kPcm24,
    kPcm32,
    kFloat,  ///< 32-bit floating point, full scale +-1
    kDouble, ///< 64-bit floating point, full scale +-1
    kULaw,   ///< G.711, 14 bits before companding
    kALaw,   ///< G.711, 13 bits before companding
    kVorbis, ///< coded; has no bits per sample
    kOpus,   ///< coded
    kMpeg,   ///< MPEG audio layers I to III, coded; read only
    kOther,  ///< ADPCM and the like, 16 bits or fewer; read only
};

/// The short name that sampleFormatFromName() takes ("pcm16") or, for other formats, a name for messages
/// ("Vorbis").
const char* sampleFormatName(SampleFormat format);

/// The format of the name pcm16, pcm24, pcm32, float or double; nothing for any other text.
std::optional<SampleFormat> sampleFormatFromName(std::string_view name);

/// Bits of an integer format (8 to 32); for the companded ones the bits before companding; 0 for all others.
int integerBits(SampleFormat format);

/// Bytes that a file holds per sample; 0 for coded formats.
int storedBytes(SampleFormat format);

/// Bits of amplitude that a sample of this format carries in single precision: the bits of an integer format;
/// 25 (24-bit mantissa and sign) for floating point and coded formats.
int signalBits(SampleFormat format);

/// Whether single precision holds every sample of this format exactly: integers of up to 24 bits, and single
/// precision itself. False for coded formats, whose decoders compute in a precision of their own.
bool fitsSinglePrecision(SampleFormat format);

/// The number of frames of a pipe that is read while it is written, where its header does not state it.
inline constexpr std::int64_t kUnknownFrames = -1;

/// The container, the sample format and the length of an audio file.
struct AudioFormat {
    Container container = Container::kWav;
    SampleFormat sample = SampleFormat::kPcm16;
    bool extensibleHeader = false; ///< WAV with the extensible format chunk, which names the speakers
    int rateHz = 0;                ///< at least 1
    int channels = 0;              ///< at least 1
    std::int64_t frames = 0;       ///< samples per channel, or kUnknownFrames

    /// Seconds; of an unknown length 0.
    double durationS() const { return frames == kUnknownFrames ? 0.0 : static_cast<double>(frames) / rateHz; }
};

} // namespace varno

#endif
