#include "Validate/Lv2/StateRecord.h"

#include <gtest/gtest.h>

namespace varno::validate {
namespace {

Lv2State example() {
    return {.values = {{"gain", 0.25F}, {"", -1.0F}},
            .properties = {{"urn:a", {"urn:type", 3, {std::byte{1}, std::byte{255}}}}, {"urn:b", {}}}};
}

TEST(Lv2StateRecord, isReadAsWritten) {
    EXPECT_EQ(stateOf(bytesOf(example())), example());
    EXPECT_EQ(stateOf(bytesOf(Lv2State{})), Lv2State{});
}

TEST(Lv2StateRecord, isRefusedWhereBytesAreMissingOrLeft) {
    Lv2State state = example();
    state.properties["urn:c"].value = {};
    const std::vector<std::byte> whole = bytesOf(state);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_FALSE(stateOf(std::span(whole).first(size))) << size;
    }
    state.properties.clear();
    std::vector<std::byte> longer = bytesOf(state);
    longer.push_back(std::byte{0});
    EXPECT_FALSE(stateOf(longer));
}

// A plug-in sees what is wrong in its own value.
TEST(Lv2StateRecord, givesTheLastValueWhatRemains) {
    Lv2State state = example();
    state.properties.erase("urn:b");
    std::vector<std::byte> bytes = bytesOf(state);
    bytes.pop_back();
    state.properties["urn:a"].value.pop_back();
    EXPECT_EQ(stateOf(bytes), state);
}

// A count of four thousand millions asks for no memory before its entries are there.
TEST(Lv2StateRecord, isRefusedForACountBeyondTheBytes) {
    EXPECT_FALSE(stateOf(std::vector(8, std::byte{0xFF})));
}

} // namespace
} // namespace varno::validate
