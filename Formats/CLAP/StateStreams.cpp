#include "CLAP/StateStreams.h"

#include "CLAP/StateRecord.h"
#include "Host/HostError.h"

#include <array>
#include <cstdint>

namespace varno {

void writeAll(const clap_ostream_t& stream, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const std::int64_t written = stream.write(&stream, bytes.data(), bytes.size());
        if (written <= 0 || static_cast<std::uint64_t>(written) > bytes.size()) {
            throw HostError("saved state: the host takes no more bytes");
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

std::vector<std::byte> readAll(const clap_istream_t& stream) {
    std::vector<std::byte> bytes;
    std::array<std::byte, 4096> part{};
    for (;;) {
        const std::int64_t read = stream.read(&stream, part.data(), part.size());
        if (read < 0 || static_cast<std::uint64_t>(read) > part.size()) {
            throw HostError("saved state: the host cannot read it");
        }
        if (read == 0) {
            return bytes;
        }
        bytes.insert(bytes.end(), part.begin(), part.begin() + read);
        if (bytes.size() > kMostRecordBytes) {
            throw HostError("saved state: found more than " + std::to_string(kMostRecordBytes) + " bytes");
        }
    }
}

} // namespace varno
