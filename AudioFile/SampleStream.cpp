#include "AudioFile/SampleStream.h"

#include "AudioFile/Sndfile.h"
#include "Files/FileError.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace varno {

namespace {

// The decoder is given no end: a length so large that no file reaches it, of whole frames of any format.
constexpr sf_count_t kEndlessBytes = sf_count_t{1} << 60;
constexpr std::size_t kSkippedBytes = 64 * 1024; // at a time
constexpr std::int64_t kMostSkippedBytes = std::int64_t{64} << 20;

bool isLittleEndianContainer(int major) {
    return major == SF_FORMAT_WAV || major == SF_FORMAT_WAVEX || major == SF_FORMAT_RF64 ||
           major == SF_FORMAT_W64;
}

// The same samples without a container.
SF_INFO rawInfo(const SF_INFO& info) {
    int endian = info.format & SF_FORMAT_ENDMASK;
    if (endian == SF_ENDIAN_FILE) {
        endian = isLittleEndianContainer(info.format & SF_FORMAT_TYPEMASK) ? SF_ENDIAN_LITTLE : SF_ENDIAN_BIG;
    }
    SF_INFO raw{};
    raw.samplerate = info.samplerate;
    raw.channels = info.channels;
    raw.format = SF_FORMAT_RAW | (info.format & SF_FORMAT_SUBMASK) | endian;
    return raw;
}

int bytesPerFrame(const SF_INFO& info) {
    const AudioFormat format = audioFormatOf(info);
    return format.channels * storedBytes(format.sample);
}

} // namespace

bool SampleStream::canDecode(const SF_INFO& info) {
    const SF_INFO raw = rawInfo(info);
    switch (info.format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
        return sf_format_check(&raw) == SF_TRUE;
    default:
        return false;
    }
}

SampleStream::SampleStream(const SF_INFO& info, StreamSource source)
    : VirtualFile(SFM_READ),
      mSource(std::move(source)),
      mFrameBytes(bytesPerFrame(info)) {
    SF_INFO raw = rawInfo(info);
    mDecoder = open(raw);
    if (!mDecoder) {
        throw FileError(mSource.name + ": cannot be decoded: " + sf_strerror(nullptr));
    }
}

// Appends bytes of samples to those received. Returns how many there are then.
std::size_t SampleStream::fill(std::size_t bytes) {
    const auto wanted = static_cast<std::size_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(bytes - mBytes.size()), mSource.mostBytes));
    const std::size_t known = std::min(wanted, mSource.ahead.size());
    const auto end = mSource.ahead.begin() + static_cast<std::ptrdiff_t>(known);
    mBytes.insert(mBytes.end(), mSource.ahead.begin(), end);
    mSource.ahead.erase(mSource.ahead.begin(), end);
    const std::size_t before = mBytes.size();
    mBytes.resize(before + wanted - known);
    const std::size_t got =
        readUpTo(mSource.file.get(), mBytes.data() + before, wanted - known, mSource.name, mSource.goOn);
    mBytes.resize(before + got);
    mSource.mostBytes -= static_cast<std::int64_t>(known + got);
    return mBytes.size();
}

bool SampleStream::waitForFrame() {
    const auto frame = static_cast<std::size_t>(mFrameBytes);
    return mBytes.size() >= frame || fill(frame) == frame;
}

std::int64_t SampleStream::receive(std::int64_t frames) {
    mBytes.erase(mBytes.begin(), mBytes.begin() + static_cast<std::ptrdiff_t>(mTaken));
    mTaken = 0;
    const auto wanted = static_cast<std::size_t>(frames * mFrameBytes);
    const std::size_t got = mBytes.size() < wanted ? fill(wanted) : wanted;
    return static_cast<std::int64_t>(got) / mFrameBytes;
}

std::int64_t SampleStream::skipRest() {
    auto skipped = static_cast<std::int64_t>(mSource.ahead.size());
    mSource.ahead.clear();
    std::vector<char> ignored(kSkippedBytes);
    while (skipped < kMostSkippedBytes) {
        const std::size_t got =
            readUpTo(mSource.file.get(), ignored.data(), ignored.size(), mSource.name, mSource.goOn);
        if (got == 0) {
            break;
        }
        skipped += static_cast<std::int64_t>(got);
    }
    return skipped;
}

sf_count_t SampleStream::length() noexcept {
    return kEndlessBytes;
}

sf_count_t SampleStream::seek(sf_count_t offset, int /*whence*/) noexcept {
    return offset; // the decoder only goes to its start
}

sf_count_t SampleStream::read(void* data, sf_count_t count) noexcept {
    const std::size_t bytes = std::min(static_cast<std::size_t>(count), mBytes.size() - mTaken);
    std::memcpy(data, mBytes.data() + mTaken, bytes);
    mTaken += bytes;
    return static_cast<sf_count_t>(bytes);
}

} // namespace varno
