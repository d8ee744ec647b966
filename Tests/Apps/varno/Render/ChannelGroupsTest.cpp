#include "Render/ChannelGroups.h"

#include "CommandLine/CommandError.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

using Groups = std::vector<ChannelGroup>;

std::string refusedGroups(const std::string& text) {
    try {
        channelGroups(text);
    } catch (const UsageError& error) {
        return error.what();
    }
    return {};
}

TEST(ChannelGroups, AreChannelsAndPairs) {
    EXPECT_EQ(channelGroups("1"), (Groups{{0}}));
    EXPECT_EQ(channelGroups("1-2"), (Groups{{0, 1}}));
    EXPECT_EQ(channelGroups("1-3,2,12-7"), (Groups{{0, 2}, {1}, {11, 6}}));
}

TEST(ChannelGroups, AreWrittenAsTheyAreRead) {
    for (const std::string text : {"1", "2-1", "1-2,3,4", "5-6,3,1-2"}) {
        EXPECT_EQ(channelGroupsText(channelGroups(text)), text);
    }
}

TEST(ChannelGroups, OtherTextsAreRefused) {
    for (const std::string text : {"", ",", "1,", ",1", "1-", "-1", "0", "0-1", "1-2-3", "a", "1-b", "1 - 2",
                                   "1;2", "1.5", "99999999999", "1,,2", "+1", "stereo"}) {
        EXPECT_EQ(refusedGroups(text),
                  "option --channels: expected channels and pairs of them such as 1-2,3,4, found \"" + text +
                      '"');
    }
}

TEST(ChannelGroups, NoChannelComesTwice) {
    EXPECT_EQ(refusedGroups("1-2,3,2"),
              "option --channels: expected each channel once, found 2 twice in \"1-2,3,2\"");
    EXPECT_EQ(refusedGroups("4-4"),
              "option --channels: expected each channel once, found 4 twice in \"4-4\"");
}

TEST(ChannelGroups, TheOthersAreTheRestOfTheFile) {
    EXPECT_EQ(allChannels(3), (ChannelGroup{0, 1, 2}));
    EXPECT_EQ(channelsOfNoGroup({{0, 1}, {4}}, 6), (std::vector<int>{2, 3, 5}));
    EXPECT_EQ(channelsOfNoGroup({{1, 0}}, 2), std::vector<int>());
}

} // namespace
} // namespace varno::test
