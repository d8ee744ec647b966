// What a screen reader receives without asking.
#include "Tests/Surround/Access/AccessSession.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AccessEventsTest : public AccessFixture {
protected:
    void listen() {
        open();
        reader().listenTo(mName);
    }

    // "path name body" of each event, the paths as the identifiers of parts.
    std::vector<std::string> events() {
        std::vector<std::string> texts;
        for (const BusEvent& event : reader().events(mName)) {
            texts.push_back(event.path + ' ' + event.name + ' ' + event.body);
        }
        return texts;
    }
};

TEST_F(AccessEventsTest, ChangesOfAPart) {
    listen();
    EXPECT_THAT(events(), IsEmpty());
    const std::string gain = pathOf("Gain");
    AccessNode& part = mWindow.part("Gain");
    part.range->current = 6.0;
    part.valueText = "6.0 dB";
    EXPECT_THAT(events(), ElementsAre(gain + " PropertyChange ('accessible-value', 0, 0, <6.0>, {})"));
    part.name = "Drive";
    EXPECT_THAT(events(), ElementsAre(gain + " PropertyChange ('accessible-name', 0, 0, <'Drive'>, {})"));
    part.description = "More.";
    EXPECT_THAT(events(),
                ElementsAre(gain + " PropertyChange ('accessible-description', 0, 0, <'More.'>, {})"));
    part.states.isFocused = true;
    EXPECT_THAT(events(), ElementsAre(gain + " StateChanged ('focused', 1, 0, <0>, {})"));
    part.states.isFocused = false;
    EXPECT_THAT(events(), ElementsAre(gain + " StateChanged ('focused', 0, 0, <0>, {})"));
    mWindow.part("HP").states.isChecked = true;
    const std::string high = pathOf("HP");
    EXPECT_THAT(events(), ElementsAre(high + " StateChanged ('checked', 1, 0, <0>, {})",
                                      high + " StateChanged ('pressed', 1, 0, <0>, {})"));
    EXPECT_THAT(events(), IsEmpty());
}

TEST_F(AccessEventsTest, WhatAReaderSetsIsReportedToo) {
    listen();
    const std::string gain = pathOf("Gain");
    set(gain, "org.a11y.atspi.Value", "CurrentValue", "2.0");
    EXPECT_THAT(events(), ElementsAre(gain + " PropertyChange ('accessible-value', 0, 0, <2.0>, {})"));
}

TEST_F(AccessEventsTest, MetersDoNotSpeak) {
    listen();
    mWindow.part("meter").range->current = -6.0;
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_EQ(get(pathOf("meter"), "org.a11y.atspi.Value", "CurrentValue"), "(<-6.0>,)");
}

TEST_F(AccessEventsTest, MessagesAreAnnounced) {
    listen();
    const std::string message = pathOf("message");
    mWindow.part("message").name = "saved to a.txt";
    EXPECT_THAT(events(),
                ElementsAre(message + " PropertyChange ('accessible-name', 0, 0, <'saved to a.txt'>, {})",
                            message + " Announcement ('', 1, 0, <'saved to a.txt'>, {})"));
    mWindow.part("message").name.clear();
    EXPECT_THAT(events(), ElementsAre(message + " PropertyChange ('accessible-name', 0, 0, <''>, {})"));
}

TEST_F(AccessEventsTest, TheWindowIsActivated) {
    listen();
    const std::string window = pathOf("window");
    mWindow.root.states.isActive = true;
    EXPECT_THAT(events(), ElementsAre(window + " StateChanged ('active', 1, 0, <0>, {})",
                                      window + " Activate ('', 0, 0, <'Effect of a test'>, {})"));
    mWindow.root.states.isActive = false;
    EXPECT_THAT(events(), ElementsAre(window + " StateChanged ('active', 0, 0, <0>, {})",
                                      window + " Deactivate ('', 0, 0, <'Effect of a test'>, {})"));
}

TEST_F(AccessEventsTest, PartsComeAndGo) {
    listen();
    const std::string window = pathOf("window");
    const std::string panel = pathOf("panel");
    const std::string high = pathOf("HP");
    const AccessNode removed = mWindow.part("HP");
    mWindow.part("panel").children.pop_back();
    const std::string reference = "('" + mName + "', '" + high + "')";
    EXPECT_THAT(events(), ElementsAre(panel + " ChildrenChanged ('remove', 1, 0, <" + reference + ">, {})",
                                      "/org/a11y/atspi/cache RemoveAccessible (" + reference + ",)"));
    EXPECT_EQ(ask(high, "org.a11y.atspi.Accessible", "GetRole"), "org.freedesktop.DBus.Error.UnknownMethod");
    mWindow.root.children.push_back(removed);
    const auto found = events();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_THAT(found[0], testing::StartsWith("/org/a11y/atspi/cache AddAccessible ((" + reference));
    EXPECT_EQ(found[1], window + " ChildrenChanged ('add', 3, 0, <" + reference + ">, {})");
    EXPECT_EQ(pathOf("HP"), high);
}

} // namespace
} // namespace varno::test
