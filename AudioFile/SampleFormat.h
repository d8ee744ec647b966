#ifndef VARNO_AUDIOFILE_SAMPLEFORMAT_H
#define VARNO_AUDIOFILE_SAMPLEFORMAT_H

#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// How a file stores one sample.
enum class SampleFormat {
    kPcm8,  // signed or unsigned, as the container has it
    kPcm16, // signed integers
    kPcm24,
    kPcm32,
    kFloat,  // 32-bit floating point, full scale +-1
    kDouble, // 64-bit floating point, full scale +-1
    kULaw,   // G.711, 14 bits before companding
    kALaw,   // G.711, 13 bits before companding
    kVorbis, // coded; has no bits per sample
    kOpus,
    kMpeg,  // MP3 and its kin; read only
    kOther, // ADPCM and the like, 16 bits or fewer; read only
};

/// Name as `--format` takes it ("pcm16") or, for formats that cannot be asked for, as people say it
/// ("Vorbis").
const char* sampleFormatName(SampleFormat format);

/// The format that `--format` names: pcm16, pcm24, pcm32, float or double; nothing for any other text.
std::optional<SampleFormat> sampleFormatFromOption(std::string_view text);

/// Bits of an integer format (8 to 32); for the companded ones the bits before companding; 0 for all others.
int integerBits(SampleFormat format);

/// Bytes that a file holds per sample; 0 for coded formats.
int storedBytes(SampleFormat format);

/// Bits of amplitude that a sample of this format carries on the signal path, which computes in single
/// precision: the bits of an integer format; 25 (24-bit mantissa and sign) for floating point and coded
/// formats.
int signalBits(SampleFormat format);

/// Whether single precision holds every sample of this format exactly: integers of up to 24 bits, and single
/// precision itself. Said of no coded format, whose decoders are their own.
bool fitsSinglePrecision(SampleFormat format);

} // namespace varno

#endif
