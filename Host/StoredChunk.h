/// A saved state as stored in a file or a project.
#ifndef VARNO_HOST_STOREDCHUNK_H
#define VARNO_HOST_STOREDCHUNK_H

#include "AAX.h"
#include "Host/ModuleDescription.h"

#include <cstddef>
#include <span>
#include <vector>

namespace varno {

/// The identifiers of the effect that wrote a saved state.
struct ChunkIdentity {
    AAX_CTypeID manufacturerID = 0;
    AAX_CTypeID productID = 0;
    AAX_CTypeID plugInID = 0;
    AAX_CTypeID chunkID = 0;
};

/// A whole chunk record: 56 bytes of header, then the data area. Integers of the header are in the machine's
/// byte order. A value type; always holds at least a header. [any]
class StoredChunk {
public:
    /// An empty record with room for `dataSize` bytes, which the host has signed with `identity`.
    StoredChunk(std::uint32_t dataSize, const ChunkIdentity& identity);

    /// Reads a record from bytes. Throws HostError, saying what was found and expected, when they are fewer
    /// than a header, when the header's data size is not what follows it, or when the data area does not
    /// begin with the marker 01 01 01 01.
    static StoredChunk fromBytes(std::span<const std::byte> bytes);
    /// The record as bytes.
    std::vector<std::byte> toBytes() const;

    /// Throws HostError, saying what was found and expected, unless the record was written by this effect:
    /// its manufacturer, product and chunk identifiers are those of `expected` and its plug-in identifier is
    /// that of any variant of `effect`, so that a mono setting loads into a stereo instance.
    void requireWrittenBy(const EffectDescription& effect, const ChunkIdentity& expected) const;

    /// The identifiers of the effect that wrote the record.
    ChunkIdentity identity() const;
    /// The data area.
    std::span<const std::byte> data() const;
    /// The record for the module to read or to write, valid as long as this object.
    const AAX_SPlugInChunk* record() const;
    AAX_SPlugInChunk* record();

private:
    StoredChunk() = default;

    std::vector<std::byte> mBytes;
};

} // namespace varno

#endif
