#include "AudioWriter.h"

#include "CarriedChunks.h"
#include "CommandError.h"
#include "FileTransfer.h"
#include "OggPages.h"
#include "PeakChunk.h"
#include "SampleQuantizer.h"
#include "SndfileFormat.h"
#include "SndfileMetadata.h"
#include "SndfileOwner.h"
#include "SndfileSink.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <unistd.h>

namespace varno {

namespace {

// libsndfile always gets this many frames at once but for the last time, so that encoders, which look at what
// they have, write the same whatever the block sizes are.
constexpr std::size_t kFramesPerWrite = 4096;

// Of 0 to 1. Both are transparent for most material: about 256 and 200 kbit/s in stereo.
constexpr double kVorbisQuality = 0.8;
constexpr double kOpusQuality = 0.4;

bool isOggCodec(SampleFormat sample) {
    return sample == SampleFormat::kVorbis || sample == SampleFormat::kOpus;
}

// The sample to write: the very one that was read where the effect returned it unchanged.
double keepUntouched(double exact, float processed) {
    const bool untouched =
        std::bit_cast<std::uint32_t>(static_cast<float>(exact)) == std::bit_cast<std::uint32_t>(processed);
    return untouched ? exact : static_cast<double>(processed);
}

// libsndfile does not tell the cue points of RF64 files, but their chunk does.
bool hasCues(const FileMetadata& metadata) {
    return !metadata.cues.empty() ||
           std::any_of(metadata.chunks.begin(), metadata.chunks.end(),
                       [](const CarriedChunk& chunk) { return chunk.id == "cue "; });
}

} // namespace

struct AudioWriter::State {
    State(const std::string& path, const AudioFormat& outputFormat, Overwrite overwrite)
        : file(path, overwrite),
          sink(file.descriptor()),
          format(outputFormat),
          channels(static_cast<std::size_t>(outputFormat.channels)) {}

    void open(const FileMetadata& metadata);
    void addMetadata(const FileMetadata& metadata);
    void flush();
    void failUnlessWritten(bool written);

    AtomicFile file;
    SndfileSink sink;
    AudioFormat format;
    std::size_t channels;
    std::vector<SampleQuantizer> quantizers; // one per channel; none where the output is not of integers
    std::vector<std::int32_t> integers;      // interleaved, waiting to be written; or
    std::vector<double> reals;
    std::size_t framesWaiting = 0;
    std::vector<CarriedChunk> chunksAtEnd;
    std::vector<std::string> leftOut;
    SndfileOwner sound; // closed before the sink it writes through
};

void AudioWriter::State::open(const FileMetadata& metadata) {
    std::optional<SF_INFO> info = sndfileInfoOf(format);
    if (info)
        sound.reset(sink.open(*info));
    failUnlessWritten(sound != nullptr);
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE); // it would tell the time of the run
    if (isOggCodec(format.sample)) {
        double quality = format.sample == SampleFormat::kOpus ? kOpusQuality : kVorbisQuality;
        sf_command(sound.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
    addMetadata(metadata);
}

void AudioWriter::State::addMetadata(const FileMetadata& metadata) {
    const ChunkFamily family = familyOf(format.container);
    for (const std::string& id : metadata.tooLarge)
        leftOut.push_back("oversized chunk " + id);
    if (family != ChunkFamily::kNone && family == metadata.family) {
        FileMetadata notInChunks;
        notInChunks.channelMap = metadata.channelMap;
        writeMetadata(sound.get(), format.container, notInChunks);
        chunksAtEnd = metadata.chunks;
        return;
    }
    if (!writeMetadata(sound.get(), format.container, metadata))
        leftOut.push_back("text tags");
    chunksAtEnd = cueChunks(family, metadata.cues);
    if (hasCues(metadata) && chunksAtEnd.empty())
        leftOut.push_back("cue points");
    if (metadata.hasSamplerLoops)
        leftOut.push_back("sampler loops");
    if (metadata.hasBroadcast)
        leftOut.push_back("broadcast chunk");
}

void AudioWriter::State::failUnlessWritten(bool written) {
    if (sink.error() != 0)
        throwWriteError(file.name(), sink.error());
    if (!written)
        throw WorkError(file.name() + ": cannot be written: " + sf_strerror(sound.get()));
}

void AudioWriter::State::flush() {
    const auto frames = static_cast<sf_count_t>(framesWaiting);
    const sf_count_t written = quantizers.empty() ? sf_writef_double(sound.get(), reals.data(), frames)
                                                  : sf_writef_int(sound.get(), integers.data(), frames);
    failUnlessWritten(written == frames);
    framesWaiting = 0;
}

AudioWriter::AudioWriter(const std::string& path, const AudioFormat& format, const FileMetadata& metadata,
                         const Options& options) {
    if (path == "-" && ::isatty(STDOUT_FILENO) == 1)
        throw WorkError("standard output: is a terminal; expected a file or a pipe");
    mState = std::make_unique<State>(path, format, options.overwrite);
    State& s = *mState;
    if (const int bits = integerBits(format.sample)) {
        const Dither dither = bits < signalBits(options.inputSample) ? options.dither : Dither::kNone;
        for (int channel = 0; channel < format.channels; ++channel)
            s.quantizers.emplace_back(bits, dither, channel);
        s.integers.resize(kFramesPerWrite * s.channels);
    } else {
        s.reals.resize(kFramesPerWrite * s.channels);
    }
    s.open(metadata);
}

AudioWriter::~AudioWriter() = default;

void AudioWriter::write(const AudioBlock& source, const float* const* processed) {
    State& s = *mState;
    const bool finiteOnly = isOggCodec(s.format.sample); // the encoders do not return from what is no number
    for (std::size_t frame = 0; frame < static_cast<std::size_t>(source.frames()); ++frame) {
        const std::size_t at = s.framesWaiting * s.channels;
        for (std::size_t c = 0; c < s.channels; ++c) {
            const double sample =
                keepUntouched(source.exact(static_cast<int>(c))[frame], processed[c][frame]);
            if (!s.quantizers.empty())
                s.integers[at + c] = s.quantizers[c].quantize(sample);
            else
                s.reals[at + c] = finiteOnly && !std::isfinite(sample) ? 0.0 : sample;
        }
        if (++s.framesWaiting == kFramesPerWrite)
            s.flush();
    }
}

void AudioWriter::commit() {
    State& s = *mState;
    s.flush();
    s.sound.reset();
    s.failUnlessWritten(true);
    appendChunks(s.file.descriptor(), familyOf(s.format.container), s.chunksAtEnd, s.file.name());
    if (s.format.container == Container::kOgg)
        setOggSerial(s.file.descriptor(), s.file.name());
    clearPeakTime(s.file.descriptor(), s.file.name());
    s.file.commit();
}

std::int64_t AudioWriter::clippedSamples() const {
    std::int64_t clipped = 0;
    for (const SampleQuantizer& quantizer : mState->quantizers)
        clipped += quantizer.clipped();
    return clipped;
}

const std::vector<std::string>& AudioWriter::metadataLeftOut() const {
    return mState->leftOut;
}

} // namespace varno
