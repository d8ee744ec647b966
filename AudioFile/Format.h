#ifndef VARNO_AUDIOFILE_FORMAT_H
#define VARNO_AUDIOFILE_FORMAT_H

#include "AudioFile/SampleFormat.h"

#include <cstdint>

namespace varno {

enum class Container { kWav, kRf64, kW64, kAiff, kCaf, kAu, kFlac, kOgg, kOther };

/// Name as people say it: "WAV", "AIFF", ...
const char* containerName(Container container);

/// What an audio file is: its container, sample format and extent.
struct AudioFormat {
    Container container = Container::kWav;
    SampleFormat sample = SampleFormat::kPcm16;
    bool extensibleHeader = false; // WAV with the extensible format chunk, which names the speakers
    int rateHz = 0;                // at least 1
    int channels = 0;              // at least 1
    std::int64_t frames = 0;       // samples per channel

    double durationS() const { return static_cast<double>(frames) / rateHz; }
};

} // namespace varno

#endif
