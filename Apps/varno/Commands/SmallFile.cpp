#include "SmallFile.h"

#include "AudioFile/Transfer.h"
#include "CommandError.h"
#include "Interruption.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace varno {

std::string readSmallFile(const std::string& path, std::size_t mostBytes, const std::string& expected) {
    const FileDescriptor file = openFile(path, O_RDONLY, throwIfInterrupted);
    if (!file.isOpen()) {
        throwReadError(path, errno);
    }
    std::string content(mostBytes + 1, '\0');
    std::size_t length = 0;
    while (length < content.size()) {
        const ssize_t got = ::read(file.get(), content.data() + length, content.size() - length);
        if (got == 0) {
            break;
        }
        if (got > 0) {
            length += static_cast<std::size_t>(got);
        } else if (errno == EINTR) {
            throwIfInterrupted();
        } else {
            throwReadError(path, errno);
        }
    }
    if (length == 0) {
        throw WorkError(path + ": is empty; expected " + expected);
    }
    if (length > mostBytes) {
        throw WorkError(path + ": has more than " + std::to_string(mostBytes) + " bytes; expected " +
                        expected);
    }
    content.resize(length);
    return content;
}

} // namespace varno
