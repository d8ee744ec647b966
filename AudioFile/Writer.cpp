#include "AudioFile/Writer.h"

#include "AudioFile/CarryOver.h"
#include "AudioFile/ContainerChunks.h"
#include "AudioFile/OggPages.h"
#include "AudioFile/Sndfile.h"
#include "AudioFile/StreamSink.h"
#include "Files/FileError.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <span>
#include <unistd.h>
#include <variant>

namespace varno {

namespace {

// Frames per call of libsndfile, except the last: encoders write the same whatever the block sizes are.
constexpr std::size_t kFramesPerWrite = 4096;

// From 0 to 1. Both are transparent for most material: about 256 and 200 kbit/s in stereo.
constexpr double kVorbisQuality = 0.8;
constexpr double kOpusQuality = 0.4;

bool isOggCodec(SampleFormat sample) {
    return sample == SampleFormat::kVorbis || sample == SampleFormat::kOpus;
}

// Interleaved frames that wait to be written.
using Waiting = std::variant<std::vector<float>, std::vector<double>>;

// Single precision, which is faster, wherever it loses nothing.
Waiting waitingFor(SampleFormat output, SampleFormat input, std::size_t samples) {
    if (output == SampleFormat::kFloat || fitsSinglePrecision(input)) {
        return std::vector<float>(samples);
    }
    return std::vector<double>(samples);
}

// Interleaved integers for libsndfile, in the fastest type: 16 bits need no conversion.
using Integers = std::variant<std::vector<std::int16_t>, std::vector<std::int32_t>>;

Integers integersFor(SampleFormat output, std::size_t samples) {
    if (output == SampleFormat::kPcm16) {
        return std::vector<std::int16_t>(samples);
    }
    return std::vector<std::int32_t>(samples);
}

sf_count_t encode(SNDFILE* sound, const std::int16_t* samples, sf_count_t frames) {
    return sf_writef_short(sound, samples, frames);
}

sf_count_t encode(SNDFILE* sound, const std::int32_t* samples, sf_count_t frames) {
    return sf_writef_int(sound, samples, frames);
}

sf_count_t encode(SNDFILE* sound, const float* samples, sf_count_t frames) {
    return sf_writef_float(sound, samples, frames);
}

sf_count_t encode(SNDFILE* sound, const double* samples, sf_count_t frames) {
    return sf_writef_double(sound, samples, frames);
}

// The sample to write: the exact one where the effect returned it unchanged.
double keepUntouched(double exact, float processed) {
    const bool untouched =
        std::bit_cast<std::uint32_t>(static_cast<float>(exact)) == std::bit_cast<std::uint32_t>(processed);
    return untouched ? exact : static_cast<double>(processed);
}

} // namespace

struct AudioWriter::State {
    State(const std::string& path, const AudioFormat& outputFormat, const Options& options)
        : isAsWritten(options.delivery == Delivery::kAsWritten && isPipeOutput(path) &&
                      StreamSink::canWrite(outputFormat.container)),
          file(path, options.overwrite, options.goOn, isAsWritten ? Delivery::kAsWritten : Delivery::kWhole),
          sink(file.descriptor()),
          format(outputFormat),
          channels(static_cast<std::size_t>(outputFormat.channels)) {}

    void open(const FileMetadata& metadata);
    void gather(const AudioBlock& source, const float* const* processed, std::size_t first,
                std::size_t count);
    void flush();
    template<class Sample>
    sf_count_t writeWaiting(std::span<Sample> samples);
    void failUnlessWritten(bool written);

    bool isAsWritten;
    AtomicFile file;
    SndfileSink sink;
    std::optional<StreamSink> stream; // in place of `sink`, where `isAsWritten`
    AudioFormat format;
    std::size_t channels;
    Waiting waiting;
    std::size_t framesWaiting = 0;
    std::optional<SampleQuantizer> quantizer; // for integer formats
    Integers integers;
    CarriedOver carried;
    SndfileOwner sound; // closed before the sink it writes through
};

void AudioWriter::State::open(const FileMetadata& metadata) {
    std::optional<SF_INFO> info = sndfileInfoOf(format);
    if (isAsWritten) {
        stream.emplace(format);
    }
    if (info) {
        sound = stream ? stream->open(*info) : sink.open(*info);
    }
    failUnlessWritten(sound != nullptr);
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE); // it would hold the time of the run
    if (isOggCodec(format.sample)) {
        double quality = format.sample == SampleFormat::kOpus ? kOpusQuality : kVorbisQuality;
        sf_command(sound.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
    writeChannelMap(sound.get(), metadata.channelMap);
    carried = carryOver(metadata, format);
    if (stream) {
        stream->setChunks(carried.chunks);
    }
}

void AudioWriter::State::failUnlessWritten(bool written) {
    if (stream) {
        stream->throwIfFailed();
    }
    if (sink.error() != 0) {
        throwWriteError(file.name(), sink.error());
    }
    if (!written) {
        throw FileError(file.name() + ": cannot be written: " + sf_strerror(sound.get()));
    }
}

void AudioWriter::State::gather(const AudioBlock& source, const float* const* processed, std::size_t first,
                                std::size_t count) {
    const auto processedAt = [&](std::size_t channel, std::size_t frame) {
        return processed[channel][first + frame];
    };
    const auto keptAt = [&](std::size_t channel, std::size_t frame) {
        return keepUntouched(source.exact(static_cast<int>(channel))[first + frame],
                             processedAt(channel, frame));
    };
    const std::size_t at = framesWaiting * channels;
    if (auto* singles = std::get_if<std::vector<float>>(&waiting)) {
        interleave(channels, count, singles->data() + at, processedAt);
    } else if (source.exact(0) == nullptr) {
        interleave(channels, count, std::get<std::vector<double>>(waiting).data() + at, processedAt);
    } else {
        interleave(channels, count, std::get<std::vector<double>>(waiting).data() + at, keptAt);
    }
    framesWaiting += count;
}

template<class Sample>
sf_count_t AudioWriter::State::writeWaiting(std::span<Sample> samples) {
    const auto frames = static_cast<sf_count_t>(framesWaiting);
    if (isOggCodec(format.sample)) { // their encoders do not return from not-a-number or infinity
        std::replace_if(
            samples.begin(), samples.end(), [](Sample sample) { return !std::isfinite(sample); }, Sample{});
    }
    if (!quantizer) {
        return encode(sound.get(), samples.data(), frames);
    }
    const auto writeAs = [&](auto& out) {
        quantizer->quantize(samples, out.data());
        return encode(sound.get(), out.data(), frames);
    };
    return std::visit(writeAs, integers);
}

void AudioWriter::State::flush() {
    const sf_count_t written = std::visit(
        [&](auto& samples) { return writeWaiting(std::span(samples.data(), framesWaiting * channels)); },
        waiting);
    failUnlessWritten(written == static_cast<sf_count_t>(framesWaiting));
    if (stream) {
        file.write(stream->take(written));
    }
    framesWaiting = 0;
}

AudioWriter::AudioWriter(const std::string& path, const AudioFormat& format, const FileMetadata& metadata,
                         const Options& options) {
    if (path == "-" && ::isatty(STDOUT_FILENO) == 1) {
        throw FileError("standard output: is a terminal; expected a file or a pipe");
    }
    mState = std::make_unique<State>(path, format, options);
    State& s = *mState;
    if (const int bits = integerBits(format.sample)) {
        const Dither dither = bits < signalBits(options.inputSample) ? options.dither : Dither::kNone;
        s.quantizer.emplace(bits, dither, s.channels);
        s.integers = integersFor(format.sample, kFramesPerWrite * s.channels);
    }
    s.waiting = waitingFor(format.sample, options.inputSample, kFramesPerWrite * s.channels);
    s.open(metadata);
}

AudioWriter::~AudioWriter() = default;

void AudioWriter::write(const AudioBlock& source, const float* const* processed) {
    State& s = *mState;
    const auto frames = static_cast<std::size_t>(source.frames());
    for (std::size_t done = 0; done < frames;) {
        const std::size_t count = std::min(frames - done, kFramesPerWrite - s.framesWaiting);
        s.gather(source, processed, done, count);
        done += count;
        if (s.framesWaiting == kFramesPerWrite) {
            s.flush();
        }
    }
    if (s.stream && s.framesWaiting > 0) {
        s.flush();
    }
}

AtomicFile& AudioWriter::finish() {
    State& s = *mState;
    s.flush();
    s.sound.reset();
    s.failUnlessWritten(true);
    if (s.stream) {
        s.file.write(s.stream->takeEnd());
        return s.file;
    }
    writeCarriedOver(s.file.descriptor(), s.carried, s.format.container, s.file.name());
    if (s.format.container == Container::kOgg) {
        setOggSerial(s.file.descriptor(), s.file.name());
    }
    clearPeakTime(s.file.descriptor(), s.file.name());
    return s.file;
}

std::int64_t AudioWriter::clippedSamples() const {
    return mState->quantizer ? mState->quantizer->clipped() : 0;
}

bool AudioWriter::isAsWritten() const {
    return mState->isAsWritten;
}

const LeftOutList& AudioWriter::metadataLeftOut() const {
    return mState->carried.leftOut;
}

} // namespace varno
