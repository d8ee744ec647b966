#include "Platform/X11/X11SelectionOwner.h"

#include "Tests/Support/XServer.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using varno::internAtoms;
using varno::X11Atoms;
using varno::X11Connection;
using varno::X11SelectionOwner;
using varno::test::XServer;

// Orders of the server's events that a test cannot produce by other programs.
class X11SelectionOwnerTest : public testing::Test {
protected:
    bool take(const std::string& text) {
        return owner.take(text, std::chrono::steady_clock::now() + std::chrono::seconds(10));
    }

    // The number that the server has for our next request.
    std::uint32_t nextRequest() const { return xcb_no_operation(connection.xcb()).sequence + 1; }

    // Notifies the owner of a loss that came after so many of our requests.
    void tellOfLossAfter(std::uint32_t requests) {
        xcb_generic_event_t loss{};
        loss.response_type = XCB_SELECTION_CLEAR;
        loss.full_sequence = requests;
        owner.handle(loss);
    }

    const XServer server;
    X11Connection connection{server.display()};
    X11Atoms atoms = internAtoms(connection.xcb());
    X11SelectionOwner owner{connection, atoms};
};

TEST_F(X11SelectionOwnerTest, LosesWhatItTookBeforeTheLoss) {
    ASSERT_TRUE(take("text"));
    ASSERT_NE(owner.text(), nullptr);

    tellOfLossAfter(nextRequest());

    EXPECT_EQ(owner.text(), nullptr);
}

TEST_F(X11SelectionOwnerTest, KeepsWhatItTookAfterTheLoss) {
    ASSERT_TRUE(take("old"));
    const std::uint32_t before = nextRequest();
    ASSERT_TRUE(take("new"));

    tellOfLossAfter(before);

    ASSERT_NE(owner.text(), nullptr);
    EXPECT_EQ(*owner.text(), "new");
}

TEST_F(X11SelectionOwnerTest, TakesNothingWhereTheServerIsTooSlow) {
    EXPECT_FALSE(owner.take("text", std::chrono::steady_clock::now() - std::chrono::seconds(1)));
    EXPECT_EQ(owner.text(), nullptr);
}

TEST_F(X11SelectionOwnerTest, HasNothingAtFirst) {
    EXPECT_EQ(owner.text(), nullptr);
}

} // namespace
