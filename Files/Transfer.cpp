#include "Files/Transfer.h"

#include "Files/FileError.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace varno {

namespace {

constexpr std::size_t kCopyBytes = 64 * 1024;
constexpr std::size_t kMoveBytes = 1 << 20;

std::string reason(int error) {
    return std::generic_category().message(error);
}

void ask(const GoOn& goOn) {
    if (goOn) {
        goOn();
    }
}

// Waits until some bytes have arrived. Returns 0 at the end. A signal to several programs (Ctrl-C) can end
// the one that writes a pipe first, so that the end is seen before the signal: the end is also a reason to
// ask.
std::size_t readSome(int descriptor, std::span<char> buffer, const std::string& name, const GoOn& goOn) {
    for (;;) {
        const ssize_t got = ::read(descriptor, buffer.data(), buffer.size());
        if (got > 0) {
            return static_cast<std::size_t>(got);
        }
        const int error = got < 0 ? errno : 0;
        ask(goOn);
        if (got == 0) {
            return 0;
        }
        if (error != EINTR) {
            throwReadError(name, error);
        }
    }
}

std::int64_t sizeOf(int descriptor, const std::string& name) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        throwReadError(name, errno);
    }
    return status.st_size;
}

struct ByteRange {
    std::int64_t offset;
    std::int64_t bytes;
};

// Within a file. Begins at the end that the other place does not overwrite.
void moveBytes(int descriptor, ByteRange range, std::int64_t to, const std::string& name) {
    std::vector<char> buffer(kMoveBytes);
    for (std::int64_t moved = 0; moved < range.bytes && to != range.offset;) {
        const std::int64_t count = std::min<std::int64_t>(range.bytes - moved, kMoveBytes);
        const std::int64_t at = to > range.offset ? range.bytes - moved - count : moved;
        if (!readAt(descriptor, range.offset + at, buffer.data(), static_cast<std::size_t>(count))) {
            throwReadError(name, errno);
        }
        writeAt(descriptor, to + at, {buffer.data(), static_cast<std::size_t>(count)}, name);
        moved += count;
    }
}

} // namespace

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

void throwReadError(const std::string& name, int error) {
    throw FileError(name + ": cannot be read: " + reason(error));
}

void throwWriteError(const std::string& name, int error) {
    throw FileError(name + ": cannot be written: " + reason(error));
}

FileDescriptor openFile(const std::string& path, int flags, const GoOn& goOn, unsigned mode) {
    for (;;) {
        FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC, mode));
        if (file.isOpen() || errno != EINTR) {
            return file;
        }
        ask(goOn);
    }
}

std::size_t readUpTo(int descriptor, char* bytes, std::size_t count, const std::string& name,
                     const GoOn& goOn) {
    std::size_t done = 0;
    while (done < count) {
        const std::size_t got = readSome(descriptor, {bytes + done, count - done}, name, goOn);
        if (got == 0) {
            break;
        }
        done += got;
    }
    return done;
}

void writeAll(int descriptor, std::string_view bytes, const std::string& name, const GoOn& goOn) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else {
            const int error = errno;
            ask(goOn); // also where the program that read a pipe was ended by the same signal
            if (error != EINTR) {
                throwWriteError(name, error);
            }
        }
    }
}

bool readAt(int descriptor, std::int64_t offset, void* bytes, std::size_t count) {
    return ::pread(descriptor, bytes, count, offset) == static_cast<ssize_t>(count);
}

void writeAt(int descriptor, std::int64_t offset, std::string_view bytes, const std::string& name) {
    while (!bytes.empty()) {
        const ssize_t written = ::pwrite(descriptor, bytes.data(), bytes.size(), offset);
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            offset += written;
        } else if (errno != EINTR) {
            throwWriteError(name, errno);
        }
    }
}

void replaceRange(int descriptor, std::int64_t offset, std::int64_t oldBytes, std::string_view bytes,
                  const std::string& name) {
    const std::int64_t fileBytes = sizeOf(descriptor, name);
    const std::int64_t from = std::min(offset + oldBytes, fileBytes);
    moveBytes(descriptor, {from, fileBytes - from}, offset + static_cast<std::int64_t>(bytes.size()), name);
    writeAt(descriptor, offset, bytes, name);
    const std::int64_t newFileBytes = fileBytes + static_cast<std::int64_t>(bytes.size()) - (from - offset);
    if (newFileBytes < fileBytes && ::ftruncate(descriptor, newFileBytes) != 0) {
        throwWriteError(name, errno);
    }
}

void copyAll(int from, const std::string& fromName, int to, const std::string& toName, const GoOn& goOn) {
    std::vector<char> buffer(kCopyBytes);
    while (const std::size_t got = readSome(from, buffer, fromName, goOn)) {
        writeAll(to, {buffer.data(), got}, toName, goOn);
        ask(goOn);
    }
}

std::optional<std::string> readWhole(const std::string& path, std::size_t mostBytes, const GoOn& goOn) {
    const FileDescriptor file = openFile(path, O_RDONLY, goOn);
    if (!file.isOpen()) {
        throwReadError(path, errno);
    }
    std::string content;
    std::vector<char> buffer(kCopyBytes);
    while (const std::size_t got = readSome(file.get(), buffer, path, goOn)) {
        if (got > mostBytes - content.size()) {
            return std::nullopt;
        }
        content.append(buffer.data(), got);
    }
    return content;
}

FileDescriptor openUnnamedTemporary() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) {
        throwWriteError("the folder for temporary files (TMPDIR)", error.value());
    }
    std::string path = folder / "varno-XXXXXX";
    FileDescriptor file(::mkostemp(path.data(), O_CLOEXEC));
    if (!file.isOpen()) {
        throwWriteError("a temporary file in " + folder.string(), errno);
    }
    ::unlink(path.c_str());
    return file;
}

} // namespace varno
