#include "Host/StoredChunk.h"

#include "Tests/Host/FixtureTest.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace varno {
namespace {

constexpr ChunkIdentity kIdentity = {AAX_FourCC("Make"), AAX_FourCC("Prod"), AAX_FourCC("Mono"),
                                     AAX_FourCC("chnk")};

std::vector<std::byte> validBytes(std::size_t dataSize = 8) {
    StoredChunk chunk(static_cast<std::uint32_t>(dataSize), kIdentity);
    std::fill_n(reinterpret_cast<std::byte*>(chunk.record()) + 56, 4, std::byte{1});
    return chunk.toBytes();
}

std::string readError(const std::vector<std::byte>& bytes) {
    return hostErrorOf([&] { StoredChunk::fromBytes(bytes); });
}

EffectDescription effectWith(AAX_CTypeID plugInID) {
    EffectDescription effect;
    effect.variants.resize(1);
    effect.variants[0].natives.resize(1);
    effect.variants[0].natives[0].properties[AAX_eProperty_PlugInID_Native] =
        static_cast<std::int32_t>(plugInID);
    return effect;
}

TEST(StoredChunkTest, IsAHeaderOf56BytesAndItsData) {
    const std::vector<std::byte> bytes = validBytes(8);
    ASSERT_EQ(64U, bytes.size());
    EXPECT_EQ(std::byte{8}, bytes[0]);
    const StoredChunk chunk = StoredChunk::fromBytes(bytes);
    EXPECT_EQ(bytes, chunk.toBytes());
    EXPECT_EQ(8U, chunk.data().size());
    EXPECT_EQ(kIdentity.manufacturerID, chunk.identity().manufacturerID);
    EXPECT_EQ(kIdentity.productID, chunk.identity().productID);
    EXPECT_EQ(kIdentity.plugInID, chunk.identity().plugInID);
    EXPECT_EQ(kIdentity.chunkID, chunk.identity().chunkID);
}

TEST(StoredChunkTest, RefusesEveryTruncation) {
    const std::vector<std::byte> bytes = validBytes(12);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_NE("", readError({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)}))
            << length;
    }
    EXPECT_EQ("", readError(bytes));
}

TEST(StoredChunkTest, ReportsWhatItFoundAndWhatItExpected) {
    EXPECT_EQ("saved state: found 3 bytes, expected a header of 56", readError(std::vector<std::byte>(3)));
    std::vector<std::byte> bytes = validBytes(8);
    bytes.resize(62);
    EXPECT_EQ("saved state: found 6 bytes of data, expected 8 by its header", readError(bytes));
    bytes = validBytes(8);
    bytes[56] = std::byte{0xAB};
    EXPECT_EQ("saved state: found marker \"AB 01 01 01\", expected \"01 01 01 01\"", readError(bytes));
}

TEST(StoredChunkTest, RefusesEveryFalseSize) {
    for (const std::int32_t size : {0, 1, 7, 9, -1, 0x7FFFFFFF}) {
        std::vector<std::byte> bytes = validBytes(8);
        std::copy_n(reinterpret_cast<const std::byte*>(&size), sizeof size, bytes.begin());
        EXPECT_NE("", readError(bytes)) << size;
    }
}

TEST(StoredChunkTest, RefusesDataWithoutAWholeMarker) {
    EXPECT_EQ("saved state: found marker \"\", expected \"01 01 01 01\"",
              readError(StoredChunk(0, kIdentity).toBytes()));
    std::vector<std::byte> bytes = validBytes(4);
    bytes.resize(59);
    bytes[0] = std::byte{3};
    EXPECT_EQ("saved state: found marker \"01 01 01\", expected \"01 01 01 01\"", readError(bytes));
}

TEST(StoredChunkTest, IsWrittenByAnyVariantOfTheEffect) {
    const StoredChunk chunk = StoredChunk::fromBytes(validBytes());
    ChunkIdentity stereo = kIdentity;
    stereo.plugInID = AAX_FourCC("Ster");
    EXPECT_EQ("", hostErrorOf([&] { chunk.requireWrittenBy(effectWith(kIdentity.plugInID), stereo); }));
    EXPECT_EQ("saved state: found plug-in identifier Mono, expected Ster",
              hostErrorOf([&] { chunk.requireWrittenBy(effectWith(stereo.plugInID), stereo); }));
}

TEST(StoredChunkTest, ReportsEveryForeignIdentifier) {
    const StoredChunk chunk = StoredChunk::fromBytes(validBytes());
    const EffectDescription effect = effectWith(kIdentity.plugInID);
    const auto errorFor = [&](ChunkIdentity identity) {
        return hostErrorOf([&] { chunk.requireWrittenBy(effect, identity); });
    };
    ChunkIdentity other = kIdentity;
    other.manufacturerID = AAX_FourCC("Xxxx");
    EXPECT_EQ("saved state: found manufacturer Make, expected Xxxx", errorFor(other));
    other = kIdentity;
    other.productID = AAX_FourCC("Xxxx");
    EXPECT_EQ("saved state: found product Prod, expected Xxxx", errorFor(other));
    other = kIdentity;
    other.chunkID = AAX_FourCC("Xxxx");
    EXPECT_EQ("saved state: found chunk identifier chnk, expected Xxxx", errorFor(other));
}

} // namespace
} // namespace varno
