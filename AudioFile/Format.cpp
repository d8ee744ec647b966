#include "AudioFile/Format.h"

namespace varno {

namespace {

constexpr int kSinglePrecisionBits = 25; // 24-bit mantissa and sign

struct SampleFormatRow {
    SampleFormat format;
    const char* name;
    bool canBeRequested; // by its name
    int integerBits;
    int storedBytes;
    int signalBits;
};

constexpr SampleFormatRow kRows[] = {
    {SampleFormat::kPcm8, "pcm8", false, 8, 1, 8},
    {SampleFormat::kPcm16, "pcm16", true, 16, 2, 16},
    {SampleFormat::kPcm24, "pcm24", true, 24, 3, 24},
    {SampleFormat::kPcm32, "pcm32", true, 32, 4, 32},
    {SampleFormat::kFloat, "float", true, 0, 4, kSinglePrecisionBits},
    {SampleFormat::kDouble, "double", true, 0, 8, kSinglePrecisionBits},
    {SampleFormat::kULaw, "u-law", false, 14, 1, 14},
    {SampleFormat::kALaw, "A-law", false, 13, 1, 13},
    {SampleFormat::kVorbis, "Vorbis", false, 0, 0, kSinglePrecisionBits},
    {SampleFormat::kOpus, "Opus", false, 0, 0, kSinglePrecisionBits},
    {SampleFormat::kMpeg, "MP3", false, 0, 0, kSinglePrecisionBits},
    {SampleFormat::kOther, "a compressed format", false, 0, 0, 16},
};

const SampleFormatRow& row(SampleFormat format) {
    return kRows[static_cast<std::size_t>(format)];
}

constexpr bool rowsStandInOrder() {
    std::size_t index = 0;
    for (const SampleFormatRow& entry : kRows) {
        if (static_cast<std::size_t>(entry.format) != index++) {
            return false;
        }
    }
    return true;
}
static_assert(rowsStandInOrder(), "row() indexes by format");

} // namespace

const char* sampleFormatName(SampleFormat format) {
    return row(format).name;
}

std::optional<SampleFormat> sampleFormatFromName(std::string_view name) {
    for (const SampleFormatRow& entry : kRows) {
        if (entry.canBeRequested && name == entry.name) {
            return entry.format;
        }
    }
    return std::nullopt;
}

int integerBits(SampleFormat format) {
    return row(format).integerBits;
}

int storedBytes(SampleFormat format) {
    return row(format).storedBytes;
}

int signalBits(SampleFormat format) {
    return row(format).signalBits;
}

bool fitsSinglePrecision(SampleFormat format) {
    const int bits = integerBits(format);
    return format == SampleFormat::kFloat || (bits > 0 && bits < kSinglePrecisionBits);
}

const char* containerName(Container container) {
    switch (container) {
    case Container::kWav:
        return "WAV";
    case Container::kRf64:
        return "RF64";
    case Container::kW64:
        return "W64";
    case Container::kAiff:
        return "AIFF";
    case Container::kCaf:
        return "CAF";
    case Container::kAu:
        return "AU";
    case Container::kFlac:
        return "FLAC";
    case Container::kOgg:
        return "Ogg";
    case Container::kOther:
        break;
    }
    return "another container";
}

} // namespace varno
