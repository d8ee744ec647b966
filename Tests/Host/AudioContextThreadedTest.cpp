#include "Host/AudioContext.h"

#include <atomic>
#include <cstring>
#include <gtest/gtest.h>
#include <thread>

namespace varno {
namespace {

constexpr std::int32_t kPorts = 24;
constexpr std::int32_t kSets = 20000;

// The values of all ports as the audio thread sees them.
std::vector<std::int32_t> seen(const PacketExchange& packets) {
    std::vector<std::int32_t> values;
    for (const Port& port : packets.ports()) {
        std::int32_t value = 0;
        std::memcpy(&value, packets.image() + port.offset, sizeof value);
        values.push_back(value);
    }
    return values;
}

TEST(PacketExchangeThreadedTest, SetsArriveWholeInOrderAndTheLastIsNeverLost) {
    VariantDescription variant;
    for (std::int32_t field = 0; field < kPorts; ++field) {
        variant.fields.push_back({field, FieldKind::kDataInPort, sizeof(std::int32_t), 1, {}});
    }
    PacketExchange packets(variant);
    std::atomic<bool> isDone{false};
    int torn = 0;
    int backwards = 0;
    std::int32_t latest = 0;

    std::thread audio([&] {
        const auto look = [&] {
            packets.acquire();
            const std::vector<std::int32_t> values = seen(packets);
            torn += values.front() != values.back() || values[kPorts / 2] != values.back() ? 1 : 0;
            backwards += values.front() < latest ? 1 : 0;
            latest = values.front();
        };
        while (!isDone.load()) {
            look();
        }
        look();
    });
    for (std::int32_t set = 1; set <= kSets; ++set) {
        packets.beginSet();
        for (std::int32_t field = 0; field < kPorts; ++field) {
            packets.post(field, &set, sizeof set);
        }
        packets.endSet();
    }
    isDone = true;
    audio.join();
    EXPECT_EQ(0, torn);
    EXPECT_EQ(0, backwards);
    EXPECT_EQ(kSets, latest);
}

} // namespace
} // namespace varno
