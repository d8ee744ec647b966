#include "AudioFile/OutputFormat.h"

#include "AudioFile/Error.h"
#include "AudioFile/Sndfile.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace varno {

namespace {

struct ExtensionRow {
    const char* extension;
    Container container;
};

constexpr ExtensionRow kExtensions[] = {
    {".wav", Container::kWav},   {".wave", Container::kWav},  {".bwf", Container::kWav},
    {".rf64", Container::kRf64}, {".w64", Container::kW64},   {".aif", Container::kAiff},
    {".aiff", Container::kAiff}, {".aifc", Container::kAiff}, {".caf", Container::kCaf},
    {".au", Container::kAu},     {".snd", Container::kAu},    {".flac", Container::kFlac},
    {".ogg", Container::kOgg},   {".oga", Container::kOgg},   {".opus", Container::kOgg},
};

std::string lowerCase(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string extensionOf(const std::string& path) {
    return lowerCase(std::filesystem::path(path).extension().string());
}

// Standard output, pipes and devices have no extension.
bool isStream(const std::string& path) {
    std::error_code ignored;
    return path == "-" || std::filesystem::is_other(path, ignored);
}

Container containerFor(const std::string& path) {
    if (isStream(path)) {
        return Container::kWav;
    }
    const std::string extension = extensionOf(path);
    for (const ExtensionRow& row : kExtensions) {
        if (extension == row.extension) {
            return row.container;
        }
    }
    throw UnsupportedFormat(path + ": has " +
                            (extension.empty() ? "no extension" : "the extension " + extension) +
                            "; expected .wav, .rf64, .w64, .aiff, .caf, .au, .flac, .ogg or .opus");
}

bool holds(AudioFormat format, SampleFormat sample) {
    format.sample = sample;
    return canWrite(format);
}

bool isCoded(SampleFormat sample) {
    return sample == SampleFormat::kVorbis || sample == SampleFormat::kOpus || sample == SampleFormat::kMpeg;
}

bool isReadOnly(SampleFormat sample) {
    return sample == SampleFormat::kMpeg || sample == SampleFormat::kOther;
}

// Formats to try in this order where the container does not hold the input's: first those that lose nothing,
// beginning with the smallest, then the best of the others.
std::array<SampleFormat, 6> substitutesFor(SampleFormat input) {
    using enum SampleFormat;
    if (input == kDouble || input == kFloat || isCoded(input)) {
        return {kFloat, kPcm32, kPcm24, kPcm16, kPcm8, kVorbis};
    }
    if (signalBits(input) > 24) {
        return {kPcm32, kDouble, kPcm24, kPcm16, kPcm8, kVorbis};
    }
    if (signalBits(input) > 16) {
        return {kPcm24, kPcm32, kFloat, kPcm16, kPcm8, kVorbis};
    }
    return {kPcm16, kPcm24, kPcm32, kFloat, kPcm8, kVorbis};
}

SampleFormat sampleFor(const AudioFormat& output, SampleFormat input, const std::string& path) {
    if (extensionOf(path) == ".opus") {
        return SampleFormat::kOpus;
    }
    if (!isReadOnly(input) && holds(output, input)) {
        return input;
    }
    for (const SampleFormat candidate : substitutesFor(input)) {
        if (holds(output, candidate)) {
            return candidate;
        }
    }
    throw UnsupportedFormat(path + ": " + containerName(output.container) + " cannot hold " +
                            std::to_string(output.channels) +
                            (output.channels == 1 ? " channel" : " channels") + " at " +
                            std::to_string(output.rateHz) + " Hz; expected another container, such as .wav");
}

std::string formatsHeld(const AudioFormat& output) {
    std::string names;
    for (const char* name : {"pcm16", "pcm24", "pcm32", "float", "double"}) {
        if (holds(output, *sampleFormatFromName(name))) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
    }
    return names.empty() ? "no --format for this container" : names;
}

std::int64_t sampleBytes(const AudioFormat& format) {
    return std::max<std::int64_t>(format.frames, 0) * format.channels * storedBytes(format.sample);
}

void fitSize(AudioFormat& format, const std::string& path) {
    if (sampleBytes(format) <= kMostRiffSampleBytes) {
        return;
    }
    if (format.container == Container::kWav) {
        format.container = Container::kRf64;
    }
    if (format.container == Container::kAiff || format.container == Container::kAu) {
        throw UnsupportedFormat(path + ": " + containerName(format.container) + " holds 4 GB, not " +
                                std::to_string(sampleBytes(format)) +
                                " bytes of samples; expected .wav, .w64 or .caf");
    }
}

std::string noteFor(const AudioFormat& input, const AudioFormat& output, bool asked,
                    const std::string& path) {
    if (output.container == Container::kRf64 && extensionOf(path) != ".rf64") {
        return path + ": written as RF64, since WAV ends at 4 GB";
    }
    if (asked || output.sample == input.sample) {
        return "";
    }
    const std::string written = sampleFormatName(output.sample);
    if (isReadOnly(input.sample) || holds(output, input.sample)) {
        return path + ": written as " + written + "; the input is " + sampleFormatName(input.sample);
    }
    return path + ": written as " + written + "; " + containerName(output.container) +
           " cannot hold the input's " + sampleFormatName(input.sample);
}

} // namespace

OutputFormat chooseOutputFormat(const AudioFormat& input, const std::string& outputPath,
                                std::optional<SampleFormat> asked, std::int64_t frames) {
    AudioFormat output = input;
    output.container = containerFor(outputPath);
    output.frames = frames;
    if (asked && !holds(output, *asked)) {
        throw UnsupportedFormat("--format " + std::string(sampleFormatName(*asked)) + ": " + outputPath +
                                " is " + containerName(output.container) +
                                ", which cannot hold it; expected " + formatsHeld(output));
    }
    output.sample = asked ? *asked : sampleFor(output, input.sample, outputPath);
    if (!holds(output, output.sample)) {
        throw UnsupportedFormat(outputPath + ": " + sampleFormatName(output.sample) + " cannot hold " +
                                std::to_string(output.rateHz) +
                                " Hz; expected 8000, 12000, 16000, 24000 or 48000");
    }
    fitSize(output, outputPath);
    return {output, noteFor(input, output, asked.has_value(), outputPath)};
}

} // namespace varno
