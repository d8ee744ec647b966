#include "AudioFile/Reader.h"

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/Error.h"
#include "AudioFile/OggPages.h"
#include "AudioFile/Sndfile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <variant>

namespace varno {

namespace {

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

// A file that can be read from any position: pipes, and files of which a part has been read, are copied.
FileDescriptor makeSeekable(FileDescriptor file, const struct stat& status, const std::string& name,
                            const GoOn& goOn) {
    if (S_ISDIR(status.st_mode)) {
        throw AudioFileError(name + ": is a folder; expected an audio file");
    }
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) {
        throw AudioFileError(name + (::isatty(file.get()) == 1 ? ": is a terminal" : ": is a device") +
                             "; expected an audio file or a pipe");
    }
    if (S_ISREG(status.st_mode) && ::lseek(file.get(), 0, SEEK_CUR) == 0) {
        return file;
    }
    FileDescriptor copy = openUnnamedTemporary();
    copyAll(file.get(), name, copy.get(), "a temporary file", goOn);
    ::lseek(copy.get(), 0, SEEK_SET);
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

[[noreturn]] void throwTruncated(const std::string& name, std::int64_t promised, std::int64_t found) {
    throw AudioFileError(name + ": is truncated: " + framesText(found) + " found, expected the " +
                         std::to_string(promised) + " that its header promises");
}

void refuseTruncated(const std::string& name, const AudioFormat& format, const SampleExtent& extent) {
    if (!extent.isTruncated()) {
        return;
    }
    if (const std::int64_t frameBytes = format.channels * storedBytes(format.sample)) {
        throwTruncated(name, extent.promised / frameBytes, extent.present / frameBytes);
    }
    throw AudioFileError(name + ": is truncated: " + std::to_string(extent.present) +
                         " bytes of samples found, expected the " + std::to_string(extent.promised) +
                         " that its header promises");
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

} // namespace

struct AudioReader::State {
    std::string name;
    FileDescriptor file;
    SndfileOwner sound;
    AudioFormat format;
    FileMetadata metadata;
    std::int64_t framesRead = 0;
    Decoded decoded;

    // For streams whose header states no length.
    std::int64_t countFrames() {
        std::vector<float> ignored(static_cast<std::size_t>(kFramesPerCount) *
                                   static_cast<std::size_t>(format.channels));
        std::int64_t count = 0;
        while (const sf_count_t got = sf_readf_float(sound.get(), ignored.data(), kFramesPerCount)) {
            count += got;
        }
        if (sf_seek(sound.get(), 0, SEEK_SET) != 0) {
            throw AudioFileError(name +
                                 ": cannot be read a second time; expected a file that tells its length");
        }
        return count;
    }
};

AudioReader::AudioReader(const std::string& path, const GoOn& goOn)
    : mState(std::make_unique<State>()) {
    State& s = *mState;
    s.name = path == "-" ? "standard input" : path;
    FileDescriptor opened = openInput(path, goOn);
    const struct stat status = statusOf(opened, s.name);
    s.file = makeSeekable(std::move(opened), status, s.name, goOn);
    if (statusOf(s.file, s.name).st_size == 0) {
        throw AudioFileError(s.name + ": is empty; expected an audio file");
    }

    const ContainerChunks container = readContainerChunks(s.file.get());
    SF_INFO info{};
    s.sound.reset(sf_open_fd(s.file.get(), SFM_READ, &info, SF_FALSE));
    if (!s.sound) {
        throw AudioFileError(s.name + ": is no audio that can be read (" +
                             withoutLineEnds(sf_strerror(nullptr)) +
                             "); expected WAV, W64, RF64, AIFF, CAF, FLAC, Ogg or the like");
    }
    s.format = audioFormatOf(info);
    s.decoded = decodedFor(s.format.sample);
    refuseTruncated(s.name, s.format, sampleExtent(container));
    if (isOggWithoutEnd(s.file.get())) {
        throw AudioFileError(s.name + ": is truncated: its stream has no end; expected a whole file");
    }
    if (s.format.frames <= 0 || s.format.frames == SF_COUNT_MAX) {
        s.format.frames = s.countFrames();
    }
    if (s.format.frames == 0) {
        throw AudioFileError(s.name + ": holds no frames; expected at least one");
    }
    s.metadata = readMetadata(s.sound.get(), s.format.channels);
    readCarriedChunks(s.file.get(), container, s.metadata);
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

int AudioReader::read(AudioBlock& block) {
    State& s = *mState;
    const std::int64_t wanted =
        std::min<std::int64_t>(block.capacityFrames(), s.format.frames - s.framesRead);
    const auto readAs = [&](auto& samples) {
        samples.resize(static_cast<std::size_t>(block.capacityFrames()) *
                       static_cast<std::size_t>(s.format.channels));
        const sf_count_t got = wanted > 0 ? decode(s.sound.get(), samples.data(), wanted) : 0;
        if (got < wanted) {
            throwTruncated(s.name, s.format.frames, s.framesRead + got);
        }
        s.framesRead += got;
        block.setInterleaved(samples.data(), static_cast<int>(got));
        return static_cast<int>(got);
    };
    return std::visit(readAs, s.decoded);
}

} // namespace varno
