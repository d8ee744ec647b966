/// The state of a plug-in as its host saves it.
#ifndef VARNO_FORMATS_CLAP_STATERECORD_H
#define VARNO_FORMATS_CLAP_STATERECORD_H

#include "Host/StoredChunk.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace varno {

/// What the plug-in has besides the module's settings.
struct PluginState {
    bool isBypassed = false;
    std::int32_t quality = 1; ///< Of kOversamplingFactors.

    bool operator==(const PluginState&) const = default;
};

/// A record is the module's chunk, unchanged, and then these numbers of 32 bits, the lowest byte first:
///
///     0x53425256 "VRBS"   what follows is the plug-in's state
///     1                   its version
///     0 or 1              whether it is bypassed
///     1, 2, 4 or 8        the quality
///
/// The chunk says itself how long it is. One with nothing behind it is a record too: it leaves bypass and
/// quality as they are. A record that is cut short, has more behind it, or is of a later version, is refused:
/// a later plug-in may have written something that this one would lose.
struct StateRecord {
    StoredChunk chunk;
    std::optional<PluginState> plugin; ///< Nothing for a bare chunk.
};

/// The longest record that is read, in bytes; the chunk takes less than one per cent of it.
inline constexpr std::size_t kMostRecordBytes = 64 * 1024;

/// [any]
std::vector<std::byte> bytesOf(const StateRecord& record);
/// @throws HostError that names what was found and what was expected [any]
StateRecord recordFrom(std::span<const std::byte> bytes);

} // namespace varno

#endif
