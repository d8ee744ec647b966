#include "AudioFile/Reader.h"

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/FlacAudio.h"
#include "AudioFile/MpegLength.h"
#include "AudioFile/OggPages.h"
#include "AudioFile/SampleStream.h"
#include "AudioFile/Sndfile.h"
#include "AudioFile/StreamHead.h"
#include "Files/FileError.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <variant>

namespace varno {

namespace {

constexpr std::int64_t kMostFlacMetadataBytes = std::int64_t{1} << 30; // of the metadata of a FLAC file

constexpr int kFramesPerCount = 4096; // per call of libsndfile while frames are counted

struct stat statusOf(const FileDescriptor& file, const std::string& name) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) {
        throwReadError(name, errno);
    }
    return status;
}

FileDescriptor openInput(const std::string& path, const GoOn& goOn) {
    FileDescriptor file = path == "-" ? FileDescriptor(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0))
                                      : openFile(path, O_RDONLY, goOn);
    if (!file.isOpen()) {
        throwReadError(path == "-" ? "standard input" : path, errno);
    }
    return file;
}

void refuseNoFile(const FileDescriptor& file, const struct stat& status, const std::string& name) {
    if (S_ISDIR(status.st_mode)) {
        throw FileError(name + ": is a folder; expected an audio file");
    }
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) {
        throw FileError(name + (::isatty(file.get()) == 1 ? ": is a terminal" : ": is a device") +
                        "; expected an audio file or a pipe");
    }
}

// A file that can be read from any position: pipes, and files of which a part has been read, are copied.
FileDescriptor makeSeekable(FileDescriptor file, const struct stat& status, const std::string& name,
                            const GoOn& goOn) {
    if (S_ISREG(status.st_mode) && ::lseek(file.get(), 0, SEEK_CUR) == 0) {
        return file;
    }
    FileDescriptor copy = openUnnamedTemporary();
    copyAll(file.get(), name, copy.get(), "a temporary file", goOn);
    return copy;
}

std::string withoutLineEnds(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    while (!text.empty() && (text.back() == ' ' || text.back() == '.')) {
        text.pop_back();
    }
    return text;
}

std::string framesText(std::int64_t frames) {
    return std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

std::string truncationText(const std::string& name, const std::string& found, std::int64_t promised) {
    return name + ": is truncated: " + found + " found, expected the " + std::to_string(promised) +
           " that its header promises";
}

std::string truncationText(const std::string& name, const AudioFormat& format, const SampleExtent& extent) {
    if (const std::int64_t frameBytes = format.channels * storedBytes(format.sample)) {
        return truncationText(name, framesText(extent.present / frameBytes), extent.limit / frameBytes);
    }
    return truncationText(name, std::to_string(extent.present) + " bytes of samples", extent.limit);
}

// Interleaved samples as libsndfile decodes them.
using Decoded = std::variant<std::vector<std::int16_t>, std::vector<float>, std::vector<double>>;

// The fastest type that holds the format exactly; 16 bits need no conversion.
Decoded decodedFor(SampleFormat sample) {
    if (sample == SampleFormat::kPcm16) {
        return std::vector<std::int16_t>();
    }
    if (fitsSinglePrecision(sample)) {
        return std::vector<float>();
    }
    return std::vector<double>();
}

sf_count_t decode(SNDFILE* sound, std::int16_t* samples, sf_count_t frames) {
    return sf_readf_short(sound, samples, frames);
}

sf_count_t decode(SNDFILE* sound, float* samples, sf_count_t frames) {
    return sf_readf_float(sound, samples, frames);
}

sf_count_t decode(SNDFILE* sound, double* samples, sf_count_t frames) {
    return sf_readf_double(sound, samples, frames);
}

// Appended to the messages of truncated files.
constexpr const char* kAcceptedHint = "; --truncated reads what is there";

} // namespace

struct AudioReader::State {
    std::string name;
    Options options;
    FileDescriptor file;
    std::optional<SndfileSource> source;
    std::optional<FlacAudio> flac;      // where libsndfile refuses the whole file
    SndfileOwner sound;                 // closed before what it reads through
    std::optional<SampleStream> stream; // in place of `sound`
    bool isWhileWritten = false;
    AudioFormat format;
    std::int64_t statedFrames = 0; // of a pipe whose `format.frames` are not known
    FileMetadata metadata;
    std::int64_t framesRead = 0;
    Decoded decoded;
    std::string truncation;

    bool openWhileWritten();
    void openSeekable();
    void openSound(SndfileSource::End end);
    bool openStream(int descriptor, const ContainerChunks& container, StreamSource samples);
    void readMetadata(int descriptor, const ContainerChunks& container, SNDFILE* opened);
    void acceptOrThrow(const std::string& text);
    void findLength();
    std::int64_t countFrames();
    template<class Sample>
    std::int64_t decodeNext(std::vector<Sample>& samples, std::int64_t most);
};

void AudioReader::State::acceptOrThrow(const std::string& text) {
    if (!options.acceptTruncated) {
        throw FileError(text + kAcceptedHint);
    }
    truncation = text;
}

void AudioReader::State::readMetadata(int descriptor, const ContainerChunks& container, SNDFILE* opened) {
    metadata = readFileMetadata(descriptor, container, format);
    metadata.cues = readCues(opened);
    metadata.channelMap = readChannelMap(opened, format.channels);
}

// Takes samples from where the container has them, whatever libsndfile makes of their stated size. Returns
// whether that is possible.
bool AudioReader::State::openStream(int descriptor, const ContainerChunks& container, StreamSource samples) {
    const FileDescriptor head = copyHead(descriptor, container, name);
    SF_INFO info{};
    SndfileSource headSource(head.get());
    const SndfileOwner opened = headSource.open(info);
    if (!opened || !SampleStream::canDecode(info)) {
        return false;
    }
    format = audioFormatOf(info);
    readMetadata(descriptor, container, opened.get());
    stream.emplace(info, std::move(samples));
    return true;
}

// Returns whether the pipe is read while it is written; else `file` is a copy of it.
bool AudioReader::State::openWhileWritten() {
    StreamHead head = readStreamHead(file.get(), name, options.goOn);
    const ContainerChunks& container = head.container;
    if (container.samples && container.fileBytes >= container.samples->offset) {
        const SampleExtent& extent = *container.samples;
        std::vector<char> ahead(static_cast<std::size_t>(container.fileBytes - extent.offset));
        readAt(head.bytes.get(), extent.offset, ahead.data(), ahead.size());
        FileDescriptor pipe(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
        if (openStream(head.bytes.get(), container,
                       {std::move(pipe), name, std::move(ahead), extent.limit, options.goOn})) {
            statedFrames = extent.isStated ? extent.limit / stream->frameBytes() : kUnknownFrames;
            format.frames = options.acceptTruncated ? kUnknownFrames : statedFrames;
            if (format.frames == kUnknownFrames && !stream->waitForFrame()) {
                format.frames = 0;
            }
            return true;
        }
    }
    FileDescriptor copy = openUnnamedTemporary();
    ::lseek(head.bytes.get(), 0, SEEK_SET);
    copyAll(head.bytes.get(), "a file in memory", copy.get(), "a temporary file", options.goOn);
    copyAll(file.get(), name, copy.get(), "a temporary file", options.goOn);
    ::lseek(copy.get(), 0, SEEK_SET);
    file = std::move(copy);
    return false;
}

void AudioReader::State::openSound(SndfileSource::End end) {
    SF_INFO info{};
    sound.reset();
    source.emplace(file.get(), end);
    sound = source->open(info);
    if (!sound) {
        info = {};
        flac.emplace(file.get(), kMostFlacMetadataBytes);
        sound = flac->open(info);
    }
    format = audioFormatOf(info);
}

void AudioReader::State::openSeekable() {
    const ContainerChunks container = readContainerChunks(file.get());
    const std::optional<SampleExtent>& extent = container.samples;
    openSound(SndfileSource::End::kShown);
    const std::string reason = withoutLineEnds(sf_strerror(sound.get()));
    const bool endsWithFile = extent && extent->present < extent->limit;
    if (endsWithFile && extent->offset <= container.fileBytes) {
        const std::int64_t at = extent->offset;
        FileDescriptor samples(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
        if (openStream(file.get(), container, {std::move(samples), name, {}, extent->present})) {
            ::lseek(file.get(), at, SEEK_SET); // both descriptors have one position
            format.frames = extent->present / stream->frameBytes();
        }
    }
    if (!stream && !sound) {
        throw FileError(name + ": is no audio that can be read (" + reason +
                        "); expected WAV, W64, RF64, AIFF, CAF, FLAC, Ogg or the like");
    }
    if (extent && extent->isTruncated()) {
        acceptOrThrow(truncationText(name, format, *extent));
    }
    if (isOggWithoutEnd(file.get())) {
        acceptOrThrow(name + ": is truncated: its stream has no end; expected a whole file");
    }
    if (!stream) {
        readMetadata(file.get(), container, sound.get());
        findLength();
    }
}

// Of streams whose header states no length, and of files that may be truncated.
void AudioReader::State::findLength() {
    const bool isStatedMpeg = format.sample != SampleFormat::kMpeg || mpegStatesLength(file.get());
    const std::int64_t stated = format.frames == SF_COUNT_MAX || !isStatedMpeg ? 0 : format.frames;
    if (stated > 0 && !options.acceptTruncated) {
        return;
    }
    const auto end = isStatedMpeg ? SndfileSource::End::kShown : SndfileSource::End::kFar;
    openSound(end);
    const std::int64_t count = countFrames();
    openSound(end); // decoders do not go back from damage
    format.frames = count;
    if (count < stated && truncation.empty()) {
        truncation = truncationText(name, framesText(count), stated);
    }
}

std::int64_t AudioReader::State::countFrames() {
    std::vector<float> ignored(static_cast<std::size_t>(kFramesPerCount) *
                               static_cast<std::size_t>(format.channels));
    std::int64_t count = 0;
    while (const sf_count_t got = sf_readf_float(sound.get(), ignored.data(), kFramesPerCount)) {
        count += got;
    }
    return count;
}

template<class Sample>
std::int64_t AudioReader::State::decodeNext(std::vector<Sample>& samples, std::int64_t most) {
    const bool isKnown = format.frames != kUnknownFrames;
    const std::int64_t wanted = isKnown ? std::min(most, format.frames - framesRead) : most;
    if (wanted == 0) {
        return 0;
    }
    samples.resize(static_cast<std::size_t>(most * format.channels));
    std::int64_t got = 0;
    if (stream) {
        const std::int64_t received = stream->receive(wanted);
        got = decode(stream->decoder(), samples.data(), received);
    } else {
        got = decode(sound.get(), samples.data(), wanted);
        if (source->error() != 0) {
            throwReadError(name, source->error());
        }
    }
    framesRead += got;
    if (got < wanted && isKnown) {
        throw FileError(truncationText(name, framesText(framesRead), format.frames) + kAcceptedHint);
    }
    if (got < wanted && framesRead < statedFrames && truncation.empty()) {
        truncation = truncationText(name, framesText(framesRead), statedFrames);
    }
    return got;
}

AudioReader::AudioReader(const std::string& path, Options options)
    : mState(std::make_unique<State>()) {
    State& s = *mState;
    s.name = path == "-" ? "standard input" : path;
    s.options = std::move(options);
    s.file = openInput(path, s.options.goOn);
    const struct stat status = statusOf(s.file, s.name);
    refuseNoFile(s.file, status, s.name);
    const bool isPipe = S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
    s.isWhileWritten = isPipe && s.options.whileWritten && s.openWhileWritten();
    if (!s.isWhileWritten) {
        const struct stat now = statusOf(s.file, s.name); // of the copy, if a part of a pipe has been read
        s.file = makeSeekable(std::move(s.file), now, s.name, s.options.goOn);
        if (statusOf(s.file, s.name).st_size == 0) {
            throw FileError(s.name + ": is empty; expected an audio file");
        }
        s.openSeekable();
    }
    if (s.format.frames == 0) {
        throw FileError(s.name + ": holds no frames; expected at least one");
    }
    s.decoded = decodedFor(s.format.sample);
    s.metadata.frames = s.format.frames;
}

AudioReader::~AudioReader() = default;

const std::string& AudioReader::name() const {
    return mState->name;
}
const AudioFormat& AudioReader::format() const {
    return mState->format;
}
const FileMetadata& AudioReader::metadata() const {
    return mState->metadata;
}
bool AudioReader::isWhileWritten() const {
    return mState->isWhileWritten;
}
const std::string& AudioReader::truncation() const {
    return mState->truncation;
}

int AudioReader::read(AudioBlock& block) {
    State& s = *mState;
    const auto readAs = [&](auto& samples) {
        const auto got = static_cast<int>(s.decodeNext(samples, block.capacityFrames()));
        block.setInterleaved(samples.data(), got);
        return got;
    };
    return std::visit(readAs, s.decoded);
}

std::int64_t AudioReader::skipRest() {
    return mState->isWhileWritten ? mState->stream->skipRest() : 0;
}

} // namespace varno
