#include "AudioFile/Sndfile.h"

#include "Files/Transfer.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varno {

namespace {

// The far end of a file: more than 800 years of MPEG audio, and little enough for what decoders compute with
// it. They look for a tag before it and find zeros. libsndfile 1.2.2 refuses MPEG audio where it cannot seek
// to an end at all.
constexpr sf_count_t kFarBytes = sf_count_t{1} << 50;

struct ContainerRow {
    Container container;
    int major;
};

// The first row of a container is the one written.
constexpr ContainerRow kContainers[] = {
    {Container::kWav, SF_FORMAT_WAV}, {Container::kWav, SF_FORMAT_WAVEX}, {Container::kRf64, SF_FORMAT_RF64},
    {Container::kW64, SF_FORMAT_W64}, {Container::kAiff, SF_FORMAT_AIFF}, {Container::kCaf, SF_FORMAT_CAF},
    {Container::kAu, SF_FORMAT_AU},   {Container::kFlac, SF_FORMAT_FLAC}, {Container::kOgg, SF_FORMAT_OGG},
};

struct SampleRow {
    SampleFormat sample;
    int subtype;
};

// The first row of a format that the container holds is the one written; ALAC and DWVW are only read.
constexpr SampleRow kSamples[] = {
    {SampleFormat::kPcm8, SF_FORMAT_PCM_S8},        {SampleFormat::kPcm8, SF_FORMAT_PCM_U8},
    {SampleFormat::kPcm16, SF_FORMAT_PCM_16},       {SampleFormat::kPcm24, SF_FORMAT_PCM_24},
    {SampleFormat::kPcm32, SF_FORMAT_PCM_32},       {SampleFormat::kFloat, SF_FORMAT_FLOAT},
    {SampleFormat::kDouble, SF_FORMAT_DOUBLE},      {SampleFormat::kULaw, SF_FORMAT_ULAW},
    {SampleFormat::kALaw, SF_FORMAT_ALAW},          {SampleFormat::kVorbis, SF_FORMAT_VORBIS},
    {SampleFormat::kOpus, SF_FORMAT_OPUS},          {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_I},
    {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_II}, {SampleFormat::kMpeg, SF_FORMAT_MPEG_LAYER_III},
    {SampleFormat::kPcm16, SF_FORMAT_ALAC_16},      {SampleFormat::kPcm24, SF_FORMAT_ALAC_20},
    {SampleFormat::kPcm24, SF_FORMAT_ALAC_24},      {SampleFormat::kPcm32, SF_FORMAT_ALAC_32},
    {SampleFormat::kPcm16, SF_FORMAT_DWVW_16},      {SampleFormat::kPcm24, SF_FORMAT_DWVW_24},
};

Container containerOf(int major) {
    for (const ContainerRow& row : kContainers) {
        if (row.major == major) {
            return row.container;
        }
    }
    return Container::kOther;
}

SampleFormat sampleOf(int subtype) {
    for (const SampleRow& row : kSamples) {
        if (row.subtype == subtype) {
            return row.sample;
        }
    }
    return SampleFormat::kOther;
}

std::optional<int> majorOf(const AudioFormat& format) {
    if (format.container == Container::kWav && format.extensibleHeader) {
        return SF_FORMAT_WAVEX;
    }
    for (const ContainerRow& row : kContainers) {
        if (row.container == format.container) {
            return row.major;
        }
    }
    return std::nullopt;
}

// More than any editor makes; limits the memory that a damaged count can take.
constexpr std::uint32_t kMostCues = 10'000;

// SF_CUES for any count: the count, then that many records.
std::size_t cueRecordBytes(std::size_t count) {
    return offsetof(SF_CUES, cue_points) + count * sizeof(SF_CUE_POINT);
}

} // namespace

AudioFormat audioFormatOf(const SF_INFO& info) {
    AudioFormat format;
    const int major = info.format & SF_FORMAT_TYPEMASK;
    format.container = containerOf(major);
    format.sample = sampleOf(info.format & SF_FORMAT_SUBMASK);
    format.extensibleHeader = major == SF_FORMAT_WAVEX;
    format.rateHz = info.samplerate;
    format.channels = info.channels;
    format.frames = info.frames;
    return format;
}

std::optional<SF_INFO> sndfileInfoOf(const AudioFormat& format) {
    const std::optional<int> major = majorOf(format);
    if (!major) {
        return std::nullopt;
    }
    SF_INFO info{};
    info.samplerate = format.rateHz;
    info.channels = format.channels;
    for (const SampleRow& row : kSamples) {
        info.format = *major | row.subtype;
        if (row.sample == format.sample && sf_format_check(&info) == SF_TRUE) {
            return info;
        }
    }
    return std::nullopt;
}

bool canWrite(const AudioFormat& format) {
    std::optional<SF_INFO> info = sndfileInfoOf(format);
    if (!info) {
        return false;
    }
    const FileDescriptor memory(::memfd_create("varno", MFD_CLOEXEC));
    if (!memory.isOpen()) {
        throwWriteError("a file in memory", errno);
    }
    SndfileSink sink(memory.get());
    return sink.open(*info) != nullptr;
}

std::vector<CuePoint> readCues(SNDFILE* file) {
    std::uint32_t count = 0;
    if (sf_command(file, SFC_GET_CUE_COUNT, &count, sizeof count) != SF_TRUE) {
        return {};
    }
    count = std::min(count, kMostCues);
    std::vector<char> record(cueRecordBytes(count));
    if (sf_command(file, SFC_GET_CUE, record.data(), static_cast<int>(record.size())) != SF_TRUE) {
        return {};
    }
    std::vector<CuePoint> cues(count);
    for (std::size_t i = 0; i < count; ++i) {
        SF_CUE_POINT point;
        std::memcpy(&point, record.data() + cueRecordBytes(i), sizeof point);
        point.name[sizeof point.name - 1] = '\0';
        cues[i] = {point.indx, point.sample_offset, point.name};
    }
    return cues;
}

std::vector<int> readChannelMap(SNDFILE* file, int channels) {
    std::vector<int> map(static_cast<std::size_t>(channels));
    const int mapBytes = static_cast<int>(map.size() * sizeof(int));
    const bool isKnown = sf_command(file, SFC_GET_CHANNEL_MAP_INFO, map.data(), mapBytes) == SF_TRUE;
    return isKnown ? map : std::vector<int>();
}

void writeChannelMap(SNDFILE* file, std::vector<int> map) {
    if (!map.empty()) {
        sf_command(file, SFC_SET_CHANNEL_MAP_INFO, map.data(), static_cast<int>(map.size() * sizeof(int)));
    }
}

sf_count_t SndfileSource::length() noexcept {
    struct stat status {};
    const sf_count_t bytes = ::fstat(mDescriptor, &status) == 0 ? status.st_size : 0;
    return mEnd == End::kFar ? std::max(bytes, kFarBytes) : bytes;
}

sf_count_t SndfileSource::seek(sf_count_t offset, int whence) noexcept {
    const sf_count_t place = placeOf(offset, whence);
    if (place < 0) {
        return -1;
    }
    mPosition = place;
    return place;
}

sf_count_t SndfileSource::read(void* data, sf_count_t count) noexcept {
    auto* bytes = static_cast<char*>(data);
    if (mEnd == End::kFar && mPosition >= kFarBytes / 2) {
        const sf_count_t zeros = std::clamp<sf_count_t>(kFarBytes - mPosition, 0, count);
        std::fill_n(bytes, zeros, '\0');
        mPosition += zeros;
        return zeros;
    }
    sf_count_t done = 0;
    while (done < count) {
        const ssize_t got =
            ::pread(mDescriptor, bytes + done, static_cast<std::size_t>(count - done), mPosition);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0 && mError == 0) {
            mError = errno;
        }
        if (got <= 0) {
            break;
        }
        done += got;
        mPosition += got;
    }
    return done;
}

sf_count_t SndfileSink::remember(sf_count_t result) {
    if (result < 0 && mError == 0) {
        mError = errno;
    }
    return result;
}

sf_count_t SndfileSink::length() noexcept {
    struct stat status {};
    return remember(::fstat(mDescriptor, &status)) < 0 ? 0 : status.st_size;
}

sf_count_t SndfileSink::seek(sf_count_t offset, int whence) noexcept {
    return remember(::lseek(mDescriptor, offset, whence));
}

sf_count_t SndfileSink::read(void* data, sf_count_t count) noexcept {
    return remember(::read(mDescriptor, data, static_cast<std::size_t>(count)));
}

sf_count_t SndfileSink::write(const void* data, sf_count_t count) noexcept {
    const auto* bytes = static_cast<const char*>(data);
    sf_count_t done = 0;
    while (done < count) {
        const ssize_t written = ::write(mDescriptor, bytes + done, static_cast<std::size_t>(count - done));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (remember(written) < 0) {
            break;
        }
        done += written;
    }
    return done;
}

sf_count_t SndfileSink::tell() noexcept {
    return seek(0, SEEK_CUR);
}

} // namespace varno
