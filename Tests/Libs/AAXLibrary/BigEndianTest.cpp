#include "BigEndian.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace varno {
namespace {

template<class U>
std::string bigEndianBytes(U value) {
    std::string bytes(sizeof(U), '?');
    WriteBigEndian(value, bytes.data());
    return bytes;
}

TEST(BigEndian, WritesTheMostSignificantByteFirst) {
    EXPECT_EQ(bigEndianBytes<std::uint16_t>(0x0102), std::string("\x01\x02"));
    EXPECT_EQ(bigEndianBytes<std::uint32_t>(0x01020304), std::string("\x01\x02\x03\x04"));
    EXPECT_EQ(bigEndianBytes<std::uint64_t>(0x0102030405060708),
              std::string("\x01\x02\x03\x04\x05\x06\x07\x08"));
    EXPECT_EQ(bigEndianBytes<std::uint16_t>(0xFFFE), std::string("\xFF\xFE"));
}

TEST(BigEndian, ReadsWhatItWrites) {
    EXPECT_EQ(ReadBigEndian<std::uint16_t>("\x01\x02"), 0x0102U);
    EXPECT_EQ(ReadBigEndian<std::uint32_t>("\xFF\x80\x03\x04"), 0xFF800304U);
    EXPECT_EQ(ReadBigEndian<std::uint64_t>(bigEndianBytes<std::uint64_t>(0xFEDCBA9876543210).data()),
              0xFEDCBA9876543210U);
}

} // namespace
} // namespace varno
