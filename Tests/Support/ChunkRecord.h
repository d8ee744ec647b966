/// Chunks in memory of exactly their size, for tests.
#ifndef VARNO_TESTS_SUPPORT_CHUNKRECORD_H
#define VARNO_TESTS_SUPPORT_CHUNKRECORD_H

#include "AAX.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace varno::test {

/// A chunk record on the heap, without a byte behind its data area, so that an address sanitizer sees every
/// access beyond it. Filled with 0xEE where nothing is given.
class ChunkRecord {
public:
    /// Room for `size` bytes of data area; the header's size field has that size.
    explicit ChunkRecord(std::size_t size)
        : mSize(size),
          mBytes(new char[kAAX_PlugInChunkHeaderSize + size]) {
        std::memset(mBytes.get(), 0xEE, kAAX_PlugInChunkHeaderSize + size);
        get()->fSize = static_cast<std::int32_t>(size);
        get()->fVersion = 7;
        get()->fChunkID = AAX_FourCC("elck");
    }
    /// A chunk with a data area.
    explicit ChunkRecord(std::string_view data)
        : ChunkRecord(data.size()) {
        std::memcpy(mBytes.get() + kAAX_PlugInChunkHeaderSize, data.data(), data.size());
    }

    AAX_SPlugInChunk* get() { return reinterpret_cast<AAX_SPlugInChunk*>(mBytes.get()); }
    AAX_SPlugInChunk* operator->() { return get(); }

    /// The data area.
    std::string data() const { return {mBytes.get() + kAAX_PlugInChunkHeaderSize, mSize}; }
    /// The name field with all of its 32 bytes.
    std::string name() { return {get()->fName, sizeof(get()->fName)}; }

private:
    std::size_t mSize;
    std::unique_ptr<char[]> mBytes;
};

} // namespace varno::test

#endif
