#include "Platform/X11/X11SelectionOwner.h"

#include "Tests/Source/Platform/X11/RawClient.h"
#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/XServer.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

using varno::internAtoms;
using varno::X11Atoms;
using varno::X11Connection;
using varno::X11Transfers;
using namespace varno::test;

// How many transfers there are, which is not visible from outside.
class X11TransfersTest : public testing::Test {
protected:
    X11TransfersTest() {
        connection.setHandler([this](const xcb_generic_event_t& event) { transfers.handle(event); });
    }

    void start(const RawClient& receiver, const std::string& property) {
        transfers.start(receiver.window(), receiver.atom(property), atoms.utf8String, text);
        connection.pump();
    }

    bool comesDownTo(std::size_t count) {
        return eventually([&] {
            connection.pump();
            return transfers.count() == count;
        });
    }

    // The events that all programs together select on its window; its destruction is selected by this one
    // alone.
    static std::uint32_t eventsHeardOf(const RawClient& receiver) {
        const auto asked = xcb_get_window_attributes(receiver.xcb(), receiver.window());
        const varno::XcbOwned<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(receiver.xcb(), asked, nullptr));
        return reply ? reply->all_event_masks : 0;
    }

    const XServer server;
    X11Connection connection{server.display()};
    X11Atoms atoms = internAtoms(connection.xcb());
    X11Transfers transfers{connection, atoms};
    std::shared_ptr<const std::string> text = std::make_shared<const std::string>(longText(kMebibyte));
};

TEST_F(X11TransfersTest, AreNoneForATextThatFits) {
    const RawClient receiver(server.display());
    text = std::make_shared<const std::string>(X11Transfers::kLargestPartBytes, 'a');

    start(receiver, "INTO");

    EXPECT_EQ(transfers.count(), 0u);
}

TEST_F(X11TransfersTest, EndWhenAllPartsAreTaken) {
    const RawClient receiver(server.display());
    start(receiver, "INTO");
    EXPECT_EQ(transfers.count(), 1u);
    EXPECT_TRUE(eventually([&] { return (eventsHeardOf(receiver) & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0; }));

    EXPECT_TRUE(eventually([&] {
        receiver.takeProperty("INTO");
        connection.pump();
        return transfers.count() == 0;
    }));
    EXPECT_EQ(text.use_count(), 1);
    EXPECT_TRUE(eventually([&] {
        connection.pump();
        return (eventsHeardOf(receiver) & XCB_EVENT_MASK_STRUCTURE_NOTIFY) == 0;
    }));
}

TEST_F(X11TransfersTest, EndWhenTheReceiversConnectionBreaks) {
    auto receiver = std::make_unique<RawClient>(server.display());
    const RawClient other(server.display());
    start(*receiver, "INTO");
    start(*receiver, "SECOND");
    start(other, "INTO");
    EXPECT_EQ(transfers.count(), 3u);

    receiver.reset();

    EXPECT_TRUE(comesDownTo(1));
}

TEST_F(X11TransfersTest, EndWhenTheReceiversWindowGoes) {
    const RawClient receiver(server.display());
    start(receiver, "INTO");

    xcb_destroy_window(receiver.xcb(), receiver.window());
    receiver.flush();

    EXPECT_TRUE(comesDownTo(0));
    EXPECT_EQ(text.use_count(), 1);
}

TEST_F(X11TransfersTest, EndWhenTheReceiverWasNeverThere) {
    constexpr xcb_window_t kNobody = 0x12345678;

    transfers.start(kNobody, atoms.text, atoms.utf8String, text);
    EXPECT_EQ(transfers.count(), 1u);

    EXPECT_TRUE(comesDownTo(0));
}

TEST_F(X11TransfersTest, AreReplacedWhereTheSameIsRequestedAgain) {
    const RawClient receiver(server.display());
    for (int times = 0; times < 10; ++times) {
        start(receiver, "INTO");
    }

    EXPECT_EQ(transfers.count(), 1u);
}

} // namespace
