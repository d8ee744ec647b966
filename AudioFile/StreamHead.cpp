#include "AudioFile/StreamHead.h"

#include <algorithm>
#include <cerrno>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace varno {

namespace {

// A head beyond these is not followed further: its bytes are in memory, and its chunks are read again
// whenever more have come.
constexpr std::int64_t kMostStreamHeadBytes = std::int64_t{64} << 20;
constexpr std::size_t kMostStreamHeadChunks = 1000;

std::int64_t wantedBytes(const ContainerChunks& container) {
    if (container.samples && container.samples->limit > 0 && container.wantedBytes == 0) {
        return container.samples->offset;
    }
    return container.wantedBytes;
}

} // namespace

StreamHead readStreamHead(int pipe, const std::string& name, const GoOn& goOn) {
    StreamHead head;
    head.bytes = FileDescriptor(::memfd_create("varno", MFD_CLOEXEC));
    if (!head.bytes.isOpen()) {
        throwWriteError("a file in memory", errno);
    }
    std::vector<char> received;
    for (;;) {
        head.container = readContainerChunks(head.bytes.get());
        const std::int64_t missing = wantedBytes(head.container) - head.container.fileBytes;
        if (missing <= 0 || wantedBytes(head.container) > kMostStreamHeadBytes ||
            head.container.chunks.size() > kMostStreamHeadChunks) {
            return head;
        }
        received.resize(static_cast<std::size_t>(missing));
        const std::size_t got = readUpTo(pipe, received.data(), received.size(), name, goOn);
        writeAll(head.bytes.get(), {received.data(), got}, "a file in memory", goOn);
        if (got < received.size()) {
            head.container = readContainerChunks(head.bytes.get());
            return head;
        }
    }
}

} // namespace varno
