#include "AudioFile/FileDescriptor.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace varno {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        close();
        mDescriptor = other.release();
    }
    return *this;
}

int FileDescriptor::release() {
    return std::exchange(mDescriptor, -1);
}

int FileDescriptor::close() {
    if (!isOpen()) {
        return 0;
    }
    return ::close(release()) == 0 ? 0 : errno;
}

} // namespace varno
