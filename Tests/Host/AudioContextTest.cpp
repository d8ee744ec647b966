#include "Host/AudioContext.h"
#include "Tests/Support/SingleStep.h"
#include "Tests/Support/TestRun.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <rapidcheck/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;

VariantDescription variantWithPorts(const std::vector<std::pair<AAX_CFieldIndex, std::uint32_t>>& ports) {
    VariantDescription variant;
    variant.fields.push_back({100, FieldKind::kAudioIn, 0, 0, {}});
    for (const auto& [field, size] : ports) {
        variant.fields.push_back({field, FieldKind::kDataInPort, size, 1, {}});
    }
    return variant;
}

// What the audio thread sees in a port of four bytes.
std::int32_t seen(const PacketExchange& packets, AAX_CFieldIndex field) {
    for (const Port& port : packets.ports()) {
        if (port.field == field) {
            std::int32_t value = 0;
            std::memcpy(&value, packets.image() + port.offset, sizeof value);
            return value;
        }
    }
    return -1;
}

AAX_Result post(PacketExchange& packets, AAX_CFieldIndex field, std::int32_t value) {
    return packets.post(field, &value, sizeof value);
}

TEST(PacketExchangeTest, DeliversASinglePacketAtOnce) {
    PacketExchange packets(variantWithPorts({{0, 4}, {5, 4}}));
    EXPECT_FALSE(packets.acquire());
    EXPECT_EQ(AAX_SUCCESS, post(packets, 5, 7));
    EXPECT_EQ(0, seen(packets, 5));
    EXPECT_TRUE(packets.acquire());
    EXPECT_EQ(7, seen(packets, 5));
    EXPECT_EQ(0, seen(packets, 0));
    EXPECT_FALSE(packets.acquire());
}

TEST(PacketExchangeTest, DeliversASetTogether) {
    PacketExchange packets(variantWithPorts({{0, 4}, {1, 4}}));
    packets.beginSet();
    post(packets, 0, 1);
    EXPECT_FALSE(packets.acquire());
    post(packets, 1, 2);
    packets.endSet();
    EXPECT_TRUE(packets.acquire());
    EXPECT_EQ(1, seen(packets, 0));
    EXPECT_EQ(2, seen(packets, 1));
}

TEST(PacketExchangeTest, AnEmptySetDeliversNothing) {
    PacketExchange packets(variantWithPorts({{0, 4}}));
    packets.beginSet();
    packets.endSet();
    EXPECT_FALSE(packets.acquire());
}

TEST(PacketExchangeTest, RefusesWhatIsNoPacketOfAPort) {
    PacketExchange packets(variantWithPorts({{0, 4}}));
    const std::int64_t wide = 1;
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, post(packets, 1, 1));
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, post(packets, 100, 1));
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, post(packets, -1, 1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, packets.post(0, &wide, sizeof wide));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, packets.post(0, nullptr, 4));
    EXPECT_FALSE(packets.acquire());
}

TEST(PacketExchangeTest, ReportsThePortsWithoutPacket) {
    PacketExchange packets(variantWithPorts({{0, 4}, {3, 4}, {4, 4}}));
    post(packets, 3, 1);
    EXPECT_THAT(packets.portsNeverPosted(), ElementsAre(0, 4));
}

TEST(PacketExchangeTest, EveryPortIsAligned) {
    PacketExchange packets(variantWithPorts({{0, 1}, {1, 8}, {2, 3}, {3, 16}}));
    for (const Port& port : packets.ports()) {
        EXPECT_EQ(0U, port.offset % alignof(std::max_align_t));
    }
}

TEST(PacketExchangeTest, WorksWithoutPorts) {
    PacketExchange packets(variantWithPorts({}));
    EXPECT_FALSE(packets.acquire());
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, post(packets, 0, 1));
}

// Any sequence of posts, sets and acquisitions: an acquired image is the whole of what was published last.
RC_GTEST_PROP(PacketExchangeTest, TheReaderSeesTheLastPublishedValueOfEveryPort, ()) {
    constexpr std::int32_t kPorts = 5;
    enum Action { kPost, kBeginSet, kEndSet, kAcquire, kActions };
    PacketExchange packets(variantWithPorts({{0, 4}, {1, 4}, {2, 4}, {3, 4}, {4, 4}}));
    std::map<std::int32_t, std::int32_t> posted;
    std::map<std::int32_t, std::int32_t> published;
    bool isSetOpen = false;
    const auto actions = *rc::gen::container<std::vector<int>>(rc::gen::inRange<int>(0, kActions));
    for (const int action : actions) {
        if (action == kPost) {
            const auto field = *rc::gen::inRange<std::int32_t>(0, kPorts);
            const auto value = *rc::gen::arbitrary<std::int32_t>();
            RC_ASSERT(post(packets, field, value) == AAX_SUCCESS);
            posted[field] = value;
        } else if (action == kBeginSet) {
            packets.beginSet();
            isSetOpen = true;
        } else if (action == kEndSet) {
            packets.endSet();
            isSetOpen = false;
        } else {
            packets.acquire();
            for (std::int32_t field = 0; field < kPorts; ++field) {
                RC_ASSERT(seen(packets, field) == published[field]);
            }
        }
        if (!isSetOpen) {
            published = posted;
        }
    }
}

#if VARNO_HAS_SINGLE_STEP
// Of the three slots each side owns one, whatever it does between two instructions of the other.
TEST(TripleBufferTest, LeavesEachSideASlotOfItsOwnAtEachInstruction) {
    TripleBuffer<int> buffer(0);
    int written = 0;
    const auto write = [&] {
        buffer.back() = ++written;
        buffer.publish();
    };
    const auto read = [&] { buffer.acquire(); };
    const auto check = [&] {
        EXPECT_NE(&buffer.back(), &buffer.front());
        buffer.acquire();
        EXPECT_NE(&buffer.back(), &buffer.front());
        EXPECT_EQ(buffer.front(), written);
        write();
        EXPECT_NE(&buffer.back(), &buffer.front());
    };
    EXPECT_GT(test::callAtEachInstruction(write, read, write, check), 1);
    EXPECT_GT(test::callAtEachInstruction(read, write, write, check), 1);
}
#endif

constexpr double kRate = 48000.0;

// Plays a second of silence after a tap of 1.0, in buffers of one size, and returns the value at the end.
float afterASecond(std::int32_t frames) {
    MeterBank meters({1}, kRate);
    meters.beforeBuffer();
    meters.taps()[0] = 1.0F;
    meters.afterBuffer(frames);
    for (std::int32_t done = 0; done < static_cast<std::int32_t>(kRate); done += frames) {
        meters.beforeBuffer();
        meters.afterBuffer(frames);
    }
    return meters.value(0);
}

TEST(MeterBankTest, FallsByTimeWhateverTheBufferSize) {
    const double expected = std::pow(10.0, -kMeterFallDBPerSecond / 20.0);
    for (const std::int32_t frames : {1, 32, 480, 1000, 4800}) {
        EXPECT_NEAR(expected, afterASecond(frames), 2e-3 * expected) << frames;
    }
}

TEST(MeterBankTest, TapsLieContiguouslyInTheOrderOfTheirIdentifiers) {
    MeterBank meters({7, 5, 3}, kRate);
    meters.taps()[1] = 0.5F;
    meters.taps()[2] = 0.25F;
    meters.afterBuffer(10);
    EXPECT_EQ(0.0F, meters.value(*meters.indexOf(7)));
    EXPECT_EQ(0.5F, meters.value(*meters.indexOf(5)));
    EXPECT_EQ(0.25F, meters.value(*meters.indexOf(3)));
    EXPECT_EQ(std::nullopt, meters.indexOf(4));
}

TEST(MeterBankTest, KeepsThePeakWhileTheValueFalls) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 0.8F;
    meters.afterBuffer(4800);
    meters.beforeBuffer();
    meters.afterBuffer(4800);
    EXPECT_LT(meters.value(0), 0.8F);
    EXPECT_EQ(0.8F, meters.peak(0));
    meters.clearPeak(0);
    EXPECT_EQ(0.0F, meters.peak(0));
}

TEST(MeterBankTest, ClipsAboveFullScaleOnly) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 1.0F;
    meters.afterBuffer(1);
    EXPECT_FALSE(meters.clipped(0));
    meters.taps()[0] = 1.0001F;
    meters.afterBuffer(1);
    EXPECT_TRUE(meters.clipped(0));
    meters.clearClip(0);
    EXPECT_FALSE(meters.clipped(0));
}

TEST(MeterBankTest, ABypassedEffectReducesNothing) {
    MeterBank meters({1, 2, 3}, kRate, {0, 2});
    const auto play = [&] {
        meters.beforeBuffer();
        std::fill_n(meters.taps(), 3, 0.5F);
        meters.afterBuffer(64);
        return std::vector<float>{meters.value(0), meters.value(1), meters.value(2)};
    };
    EXPECT_EQ(play(), (std::vector<float>{0.5F, 0.5F, 0.5F}));
    meters.setBypassed(true);
    EXPECT_EQ(play(), (std::vector<float>{0.0F, 0.5F, 0.0F}));
    EXPECT_EQ(meters.taps()[0], 0.0F) << "a value from before would fall slowly afterwards";
    meters.setBypassed(false);
    EXPECT_EQ(play(), (std::vector<float>{0.5F, 0.5F, 0.5F}));
}

TEST(MeterBankTest, EndsAtZero) {
    MeterBank meters({1, 2}, kRate);
    meters.taps()[0] = 2.0F * kMeterFloor;
    meters.taps()[1] = std::numeric_limits<float>::quiet_NaN();
    meters.afterBuffer(48000);
    meters.beforeBuffer();
    EXPECT_EQ(0.0F, meters.taps()[0]);
    EXPECT_EQ(0.0F, meters.taps()[1]);
}

TEST(MeterBankTest, ABufferOfNoFramesDoesNotMakeItFall) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 0.5F;
    meters.afterBuffer(0);
    meters.beforeBuffer();
    EXPECT_EQ(0.5F, meters.taps()[0]);
}

TEST(MeterBankTest, ResetPutsEverythingToZero) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 2.0F;
    meters.afterBuffer(1);
    meters.reset();
    EXPECT_EQ(0.0F, meters.taps()[0]);
    EXPECT_EQ(0.0F, meters.value(0));
    EXPECT_EQ(0.0F, meters.peak(0));
    EXPECT_FALSE(meters.clipped(0));
}

} // namespace
} // namespace varno
