#include "AudioFile/FlacAudio.h"

#include "AudioFile/Transfer.h"

#include <algorithm>
#include <cstdio>
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
    : mDescriptor(descriptor),
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
    if (mBytes == 0) {
        return nullptr;
    }
    SF_VIRTUAL_IO io{length, seek, read, write, tell};
    return SndfileOwner(sf_open_virtual(&io, SFM_READ, &info, this));
}

sf_count_t FlacAudio::length(void* user) {
    return static_cast<FlacAudio*>(user)->mBytes;
}

sf_count_t FlacAudio::seek(sf_count_t offset, int whence, void* user) {
    auto* audio = static_cast<FlacAudio*>(user);
    if (whence == SEEK_CUR) {
        offset += audio->mPosition;
    } else if (whence == SEEK_END) {
        offset += audio->mBytes;
    }
    audio->mPosition = std::clamp<sf_count_t>(offset, 0, audio->mBytes);
    return audio->mPosition;
}

sf_count_t FlacAudio::read(void* data, sf_count_t count, void* user) {
    auto* audio = static_cast<FlacAudio*>(user);
    auto* out = static_cast<char*>(data);
    const auto startBytes = static_cast<std::int64_t>(audio->mStart.size());
    const std::int64_t wanted = std::min<std::int64_t>(count, audio->mBytes - audio->mPosition);
    const std::int64_t ofStart = std::clamp<std::int64_t>(startBytes - audio->mPosition, 0, wanted);
    std::copy_n(audio->mStart.data() + std::min(audio->mPosition, startBytes), ofStart, out);
    const auto ofFile = static_cast<std::size_t>(wanted - ofStart);
    if (ofFile > 0 && !readAt(audio->mDescriptor, audio->mPosition + ofStart + audio->mSkippedBytes,
                              out + ofStart, ofFile)) {
        return 0;
    }
    audio->mPosition += wanted;
    return wanted;
}

sf_count_t FlacAudio::write(const void* /*data*/, sf_count_t /*count*/, void* /*user*/) {
    return 0;
}

sf_count_t FlacAudio::tell(void* user) {
    return static_cast<FlacAudio*>(user)->mPosition;
}

} // namespace varno
