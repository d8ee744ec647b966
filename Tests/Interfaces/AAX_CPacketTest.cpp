#include "AAX_CPacket.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace varno {
namespace {

TEST(Packet, StartsDirtyAndWithoutPayload) {
    const AAX_CPacket packet(16);
    EXPECT_EQ(packet.GetFieldIndex(), 16);
    EXPECT_TRUE(packet.IsDirty());
    EXPECT_EQ(packet.GetSize(), 0U);
}

TEST(Packet, ThrowsWithoutPayload) {
    AAX_CPacket packet(0);
    EXPECT_THROW(packet.GetPayload(), std::out_of_range);
}

TEST(Packet, IsAsLongAsTheLastValueWritten) {
    AAX_CPacket packet(0);
    *packet.GetPtr<double>() = 0.5;
    EXPECT_EQ(packet.GetSize(), 8U);
    *packet.GetPtr<float>() = 0.25F;
    EXPECT_EQ(packet.GetSize(), 4U);
    float posted = 0.0F;
    std::memcpy(&posted, packet.GetPayload(), sizeof(posted));
    EXPECT_EQ(posted, 0.25F);
}

TEST(Packet, GrowsWithZeroBytes) {
    AAX_CPacket packet(0);
    using Block = std::array<unsigned char, 12>;
    EXPECT_EQ(*packet.GetPtr<Block>(), Block{});
    packet.GetPtr<Block>()->fill(0xFF);
    *packet.GetPtr<std::uint16_t>() = 0x0101;
    const Block expected = {1, 1};
    EXPECT_EQ(*packet.GetPtr<Block>(), expected);
}

TEST(Packet, RemembersWhetherItIsDirty) {
    AAX_CPacket packet(0);
    packet.SetDirty(false);
    EXPECT_FALSE(packet.IsDirty());
    packet.SetDirty(true);
    EXPECT_TRUE(packet.IsDirty());
}

} // namespace
} // namespace varno
