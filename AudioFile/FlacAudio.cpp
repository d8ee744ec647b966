#include "AudioFile/FlacAudio.h"

#include "Files/Transfer.h"

#include <algorithm>
#include <sys/stat.h>

namespace varno {

namespace {

// RFC 9639, section 8: a block's header is the type with a flag on the last one, and 24 bits of length.
constexpr std::size_t kFlacMagicBytes = 4;
constexpr std::size_t kBlockHeaderBytes = 4;
constexpr std::size_t kStreamInfoBytes = 34;
constexpr std::size_t kStartBytes = kFlacMagicBytes + kBlockHeaderBytes + kStreamInfoBytes;
constexpr unsigned kLastFlag = 0x80;

// Where the first frame is; 0 where the blocks go beyond the end of the file or `mostBytes`.
std::int64_t firstFrame(int descriptor, std::int64_t mostBytes) {
    std::int64_t at = kFlacMagicBytes;
    for (unsigned flags = 0; (flags & kLastFlag) == 0;) {
        unsigned char header[kBlockHeaderBytes];
        if (at > mostBytes || !readAt(descriptor, at, header, sizeof header)) {
            return 0;
        }
        flags = header[0];
        at += static_cast<std::int64_t>(sizeof header) + (header[1] << 16 | header[2] << 8 | header[3]);
    }
    return at;
}

} // namespace

FlacAudio::FlacAudio(int descriptor, std::int64_t mostBytes)
    : VirtualFile(SFM_READ),
      mDescriptor(descriptor),
      mStart(kStartBytes, '\0') {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !readAt(descriptor, 0, mStart.data(), mStart.size()) ||
        !mStart.starts_with("fLaC")) {
        return;
    }
    const std::int64_t frames = firstFrame(descriptor, mostBytes);
    if (frames >= static_cast<std::int64_t>(kStartBytes) && frames < status.st_size) {
        mStart[kFlacMagicBytes] = static_cast<char>(kLastFlag);
        mSkippedBytes = frames - static_cast<std::int64_t>(kStartBytes);
        mBytes = status.st_size - mSkippedBytes;
    }
}

SndfileOwner FlacAudio::open(SF_INFO& info) {
    return mBytes == 0 ? nullptr : VirtualFile::open(info);
}

sf_count_t FlacAudio::seek(sf_count_t offset, int whence) noexcept {
    mPosition = std::clamp<sf_count_t>(placeOf(offset, whence), 0, mBytes);
    return mPosition;
}

sf_count_t FlacAudio::read(void* data, sf_count_t count) noexcept {
    auto* out = static_cast<char*>(data);
    const auto startBytes = static_cast<std::int64_t>(mStart.size());
    const std::int64_t wanted = std::min<std::int64_t>(count, mBytes - mPosition);
    const std::int64_t ofStart = std::clamp<std::int64_t>(startBytes - mPosition, 0, wanted);
    std::copy_n(mStart.data() + std::min(mPosition, startBytes), ofStart, out);
    const auto ofFile = static_cast<std::size_t>(wanted - ofStart);
    if (ofFile > 0 && !readAt(mDescriptor, mPosition + ofStart + mSkippedBytes, out + ofStart, ofFile)) {
        return 0;
    }
    mPosition += wanted;
    return wanted;
}

} // namespace varno
