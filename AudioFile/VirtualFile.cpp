#include "AudioFile/VirtualFile.h"

#include <cstdio>

namespace varno {

SndfileOwner VirtualFile::open(SF_INFO& info) {
    SF_VIRTUAL_IO io{
        [](void* user) { return of(user).length(); },
        [](sf_count_t offset, int whence, void* user) { return of(user).seek(offset, whence); },
        [](void* data, sf_count_t count, void* user) { return of(user).read(data, count); },
        [](const void* data, sf_count_t count, void* user) { return of(user).write(data, count); },
        [](void* user) { return of(user).tell(); },
    };
    return SndfileOwner(sf_open_virtual(&io, mMode, &info, this));
}

sf_count_t VirtualFile::placeOf(sf_count_t offset, int whence) noexcept {
    switch (whence) {
    case SEEK_CUR:
        return offset + tell();
    case SEEK_END:
        return offset + length();
    default:
        return offset;
    }
}

} // namespace varno
