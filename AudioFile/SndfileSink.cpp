#include "AudioFile/SndfileSink.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace varno {

SNDFILE* SndfileSink::open(SF_INFO& info) {
    SF_VIRTUAL_IO io{length, seek, read, write, tell};
    return sf_open_virtual(&io, SFM_WRITE, &info, this);
}

sf_count_t SndfileSink::remember(sf_count_t result) {
    if (result < 0 && mError == 0) {
        mError = errno;
    }
    return result;
}

sf_count_t SndfileSink::length(void* user) {
    auto* sink = static_cast<SndfileSink*>(user);
    struct stat status {};
    return sink->remember(::fstat(sink->mDescriptor, &status)) < 0 ? 0 : status.st_size;
}

sf_count_t SndfileSink::seek(sf_count_t offset, int whence, void* user) {
    auto* sink = static_cast<SndfileSink*>(user);
    return sink->remember(::lseek(sink->mDescriptor, offset, whence));
}

sf_count_t SndfileSink::read(void* data, sf_count_t count, void* user) {
    auto* sink = static_cast<SndfileSink*>(user);
    return sink->remember(::read(sink->mDescriptor, data, static_cast<std::size_t>(count)));
}

sf_count_t SndfileSink::write(const void* data, sf_count_t count, void* user) {
    auto* sink = static_cast<SndfileSink*>(user);
    const auto* bytes = static_cast<const char*>(data);
    sf_count_t done = 0;
    while (done < count) {
        const ssize_t written =
            ::write(sink->mDescriptor, bytes + done, static_cast<std::size_t>(count - done));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (sink->remember(written) < 0) {
            break;
        }
        done += written;
    }
    return done;
}

sf_count_t SndfileSink::tell(void* user) {
    return seek(0, SEEK_CUR, user);
}

} // namespace varno
