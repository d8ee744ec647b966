#include "Surround/Settings/TextReading.h"

#include "Files/FileError.h"
#include "Files/Transfer.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace varno {
namespace {

namespace fs = std::filesystem;

TextFile unreadable(int error) {
    return {{}, "cannot be read: " + std::generic_category().message(error)};
}

} // namespace

TextFile readTextFile(const fs::path& path) {
    const FileDescriptor file = openFile(path, O_RDONLY | O_NONBLOCK | O_NOCTTY, {});
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) {
        return unreadable(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return {{}, "is no file"};
    }
    std::string text(kMostTextBytes + 1, '\0');
    try {
        text.resize(readUpTo(file.get(), text.data(), text.size(), path, {}));
    } catch (const FileError&) {
        return unreadable(errno);
    }
    if (text.size() > kMostTextBytes) {
        return {{}, "has more than " + std::to_string(kMostTextBytes) + " bytes"};
    }
    return {std::move(text), {}};
}

} // namespace varno
