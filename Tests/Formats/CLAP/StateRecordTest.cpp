// The bytes of a state.
#include "CLAP/StateRecord.h"
#include "Host/HostError.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace varno::test {
namespace {

using Bytes = std::vector<std::byte>;

// A chunk of a marker and four bytes more.
StoredChunk chunk() {
    StoredChunk made(8, {1, 2, 3, 4});
    std::copy_n("\1\1\1\1abcd", 8, made.record()->fData);
    return made;
}

Bytes withWords(const std::vector<std::uint32_t>& words) {
    Bytes bytes = chunk().toBytes();
    for (const std::uint32_t word : words) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<std::byte>(word >> shift));
        }
    }
    return bytes;
}

std::string refusalOf(const Bytes& bytes) {
    try {
        recordFrom(bytes);
    } catch (const HostError& error) {
        return error.what();
    }
    return "";
}

TEST(StateRecord, isTheChunkAndThenThePluginsState) {
    EXPECT_EQ(bytesOf({chunk(), PluginState{true, 4}}), withWords({0x53425256, 1, 1, 4}));
    EXPECT_EQ(bytesOf({chunk(), std::nullopt}), chunk().toBytes());
}

TEST(StateRecord, isReadAsItWasWritten) {
    for (const bool isBypassed : {false, true}) {
        for (const std::int32_t quality : {1, 2, 4, 8}) {
            const PluginState state{isBypassed, quality};
            const StateRecord record = recordFrom(bytesOf({chunk(), state}));
            EXPECT_EQ(record.plugin, state);
            EXPECT_EQ(record.chunk.toBytes(), chunk().toBytes());
        }
    }
    EXPECT_EQ(recordFrom(chunk().toBytes()).plugin, std::nullopt);
}

TEST(StateRecord, isRefusedAtEveryLengthButItsOwnAndThatOfTheChunk) {
    const Bytes whole = bytesOf({chunk(), PluginState{true, 4}});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        if (length != chunk().toBytes().size()) {
            EXPECT_NE(refusalOf(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
                      "")
                << length;
        }
    }
    Bytes longer = whole;
    longer.push_back(std::byte{0});
    EXPECT_EQ(refusalOf(longer), "saved state: found a state of bytes: 17, expected 16");
}

TEST(StateRecord, isRefusedForWhatItSays) {
    EXPECT_EQ(refusalOf(withWords({0x53425256, 2, 1, 4, 5})), "saved state: found version 2, expected 1");
    EXPECT_EQ(refusalOf(withWords({0x53425256, 0, 1, 4})), "saved state: found version 0, expected 1");
    EXPECT_EQ(refusalOf(withWords({0x53425256, 1, 2, 4})), "saved state: found bypass 2, expected 0 or 1");
    EXPECT_EQ(refusalOf(withWords({0x53425256, 1, 0, 3})),
              "saved state: found quality 3, expected 1, 2, 4 or 8");
    EXPECT_EQ(refusalOf(withWords({0x53425257, 1, 0, 4})),
              "saved state: found 16 bytes behind the settings, expected the plug-in's state or nothing");
}

TEST(StateRecord, isRefusedForAChunkThatIsNone) {
    Bytes noMarker = withWords({});
    noMarker[noMarker.size() - 8] = std::byte{2};
    EXPECT_NE(refusalOf(noMarker), "");
    Bytes negative = withWords({0x53425256, 1, 1, 4});
    negative[3] = std::byte{0xFF};
    EXPECT_NE(refusalOf(negative), "");
    Bytes endless = withWords({0x53425256, 1, 1, 4});
    endless[3] = std::byte{0x7F};
    EXPECT_NE(refusalOf(endless), "");
}

} // namespace
} // namespace varno::test
