#include "AudioFile/StreamSink.h"

#include "Files/Transfer.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

constexpr std::size_t kRiffHeaderBytes = 12; // "RIFF", size, "WAVE"
constexpr std::size_t kRiffSizeOffset = 4;
constexpr std::size_t kChunkHeaderBytes = 8; // identifier, size
constexpr std::int64_t kRiffUncounted = 8;   // bytes that the size of a RIFF file leaves out
constexpr std::uint32_t kUnknownSize = 0xFFFFFFFF;

void putSize(std::string& bytes, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[offset + i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
}

std::size_t sizeAt(std::string_view bytes, std::size_t offset) {
    std::size_t value = 0;
    for (std::size_t i = 4; i > 0; --i) {
        value = value << 8 | static_cast<unsigned char>(bytes[offset + i - 1]);
    }
    return value;
}

// The chunks as they are appended to a file: to one that holds nothing else.
std::string bytesOf(const std::vector<CarriedChunk>& chunks) {
    const std::string name = "a file in memory";
    const FileDescriptor file(::memfd_create("varno", MFD_CLOEXEC));
    if (!file.isOpen()) {
        throwWriteError(name, errno);
    }
    std::string start = "RIFF";
    start.resize(kRiffHeaderBytes);
    writeAll(file.get(), start, name, {});
    appendChunks(file.get(), ChunkFamily::kRiff, chunks, name);
    std::string bytes(static_cast<std::size_t>(::lseek(file.get(), 0, SEEK_END)) - kRiffHeaderBytes, '\0');
    if (!readAt(file.get(), kRiffHeaderBytes, bytes.data(), bytes.size())) {
        throwReadError(name, errno);
    }
    return bytes;
}

} // namespace

StreamSink::StreamSink(const AudioFormat& format)
    : VirtualFile(SFM_WRITE),
      mFrames(format.frames),
      mFrameBytes(std::int64_t{format.channels} * storedBytes(format.sample)) {
}

void StreamSink::setChunks(const std::vector<CarriedChunk>& chunks) {
    mChunks = bytesOf(chunks);
}

void StreamSink::throwIfFailed() const {
    if (mFailure) {
        std::rethrow_exception(mFailure);
    }
}

std::string StreamSink::takeWaiting() {
    mTaken += static_cast<sf_count_t>(mWaiting.size());
    return std::exchange(mWaiting, {});
}

std::string StreamSink::take(std::int64_t newFrames) {
    std::string bytes = takeWaiting();
    if (mHasHeader || bytes.empty()) {
        return bytes;
    }
    mHasHeader = true;
    const auto sampleBytes = static_cast<std::size_t>(newFrames * mFrameBytes);
    std::string header = bytes.substr(0, bytes.size() - sampleBytes);
    setSizes(header);
    return header + bytes.substr(bytes.size() - sampleBytes);
}

// `header` ends with the header of the chunk of samples.
void StreamSink::setSizes(std::string& header) const {
    const bool isKnown = mFrames != kUnknownFrames;
    for (std::size_t at = kRiffHeaderBytes; at + kChunkHeaderBytes < header.size();) {
        const std::size_t data = at + kChunkHeaderBytes;
        if (std::string_view(header).substr(at).starts_with("fact")) { // the number of frames
            putSize(header, data, isKnown ? static_cast<std::uint32_t>(mFrames) : kUnknownSize);
        }
        const std::size_t size = sizeAt(header, at + 4);
        at = data + size + size % 2;
    }
    const std::size_t sizeOffset = header.size() - 4;
    if (isKnown) {
        const std::int64_t sampleBytes = mFrames * mFrameBytes;
        const std::int64_t all = static_cast<std::int64_t>(header.size() + mChunks.size()) + sampleBytes +
                                 sampleBytes % 2 - kRiffUncounted;
        putSize(header, sizeOffset, static_cast<std::uint32_t>(sampleBytes));
        putSize(header, kRiffSizeOffset, static_cast<std::uint32_t>(all));
    } else {
        putSize(header, sizeOffset, kUnknownSize);
        putSize(header, kRiffSizeOffset, kUnknownSize);
        header.insert(header.size() - kChunkHeaderBytes, mChunks);
    }
}

std::string StreamSink::takeEnd() {
    const std::string padding = takeWaiting();
    return mFrames == kUnknownFrames ? std::string() : padding + mChunks;
}

sf_count_t StreamSink::length() noexcept {
    return mTaken + static_cast<sf_count_t>(mWaiting.size());
}

sf_count_t StreamSink::seek(sf_count_t offset, int whence) noexcept {
    mPosition = placeOf(offset, whence);
    return mPosition;
}

sf_count_t StreamSink::write(const void* data, sf_count_t count) noexcept {
    const sf_count_t dropped = std::clamp<sf_count_t>(mTaken - mPosition, 0, count);
    const std::string_view bytes(static_cast<const char*>(data) + dropped,
                                 static_cast<std::size_t>(count - dropped));
    if (!bytes.empty()) {
        const auto at = static_cast<std::size_t>(mPosition + dropped - mTaken);
        try {
            mWaiting.resize(std::max(mWaiting.size(), at + bytes.size()));
            mWaiting.replace(at, bytes.size(), bytes);
        } catch (...) { // memory is short
            mFailure = std::current_exception();
            return 0;
        }
    }
    mPosition += count;
    return count;
}

} // namespace varno
