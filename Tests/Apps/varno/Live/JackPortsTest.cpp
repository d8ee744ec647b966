#include "JackPorts.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(JackPorts, NamesAreFixed) {
    EXPECT_EQ(portName(PortDirection::kInput, 1, 0), "in");
    EXPECT_EQ(portName(PortDirection::kOutput, 1, 0), "out");
    EXPECT_EQ(portName(PortDirection::kInput, 2, 0), "in_l");
    EXPECT_EQ(portName(PortDirection::kInput, 2, 1), "in_r");
    EXPECT_EQ(portName(PortDirection::kOutput, 2, 0), "out_l");
    EXPECT_EQ(portName(PortDirection::kOutput, 2, 1), "out_r");
}

TEST(JackPorts, EachInputHearsOneCapture) {
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 8), ElementsAre(Pair(0, 0), Pair(1, 1)));
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 1), ElementsAre(Pair(0, 0), Pair(1, 0)));
    EXPECT_THAT(portPairs(PortDirection::kInput, 1, 2), ElementsAre(Pair(0, 0)));
}

TEST(JackPorts, OutputsGoToBothSides) {
    EXPECT_THAT(portPairs(PortDirection::kOutput, 2, 8), ElementsAre(Pair(0, 0), Pair(1, 1)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 2, 1), ElementsAre(Pair(0, 0), Pair(1, 0)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 1, 8), ElementsAre(Pair(0, 0), Pair(0, 1)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 1, 1), ElementsAre(Pair(0, 0)));
}

TEST(JackPorts, WithoutPortsThereIsNothingToConnect) {
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 0), IsEmpty());
    EXPECT_THAT(portPairs(PortDirection::kInput, 0, 2), IsEmpty());
}

} // namespace
} // namespace varno
