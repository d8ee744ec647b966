#include "Platform/X11/X11Clipboard.h"

#include "Tests/Source/Platform/X11/RawClient.h"
#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Source/Platform/X11/StrangeOwner.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/XServer.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <vector>

namespace {

using testing::IsSupersetOf;
using varno::RunLoop;
using varno::X11Clipboard;
using namespace varno::test;

// A program that receives what our clipboard serves.
class Receiver : public RawClient {
public:
    using RawClient::RawClient;

    // Reads the events that have arrived; the notice that answers a request is kept.
    void look() {
        while (const RawEvent event = nextEvent()) {
            if (typeOfRaw(*event) == XCB_SELECTION_NOTIFY) {
                notice = reinterpret_cast<const xcb_selection_notify_event_t&>(*event);
            }
        }
    }

    std::optional<xcb_selection_notify_event_t> notice;
};

class X11ClipboardServingTest : public testing::Test {
protected:
    template<typename Condition>
    bool served(Condition condition) {
        return eventually([&] {
            loop->tick();
            return condition();
        });
    }

    // The property that holds the answer, as our clipboard reports it; none for a refusal.
    xcb_atom_t answerTo(Receiver& receiver, const std::string& target, const std::string& property,
                        xcb_timestamp_t time = XCB_CURRENT_TIME) {
        receiver.notice.reset();
        receiver.request(target, property, time);
        EXPECT_TRUE(served([&] {
            receiver.look();
            return receiver.notice.has_value();
        }));
        return receiver.notice ? receiver.notice->property : xcb_atom_t{XCB_ATOM_NONE};
    }

    RawProperty received(const std::string& target) {
        EXPECT_EQ(answerTo(client, target, "INTO"), client.atom("INTO"));
        return client.takeProperty("INTO");
    }

    // The next part of a text that comes in parts.
    std::string nextPart(Receiver& receiver, const std::string& property) {
        RawProperty part;
        EXPECT_TRUE(served([&] {
            part = receiver.takeProperty(property);
            return part.type != XCB_ATOM_NONE;
        }));
        EXPECT_EQ(part.type, receiver.atom("UTF8_STRING"));
        return part.bytes;
    }

    std::string allParts(Receiver& receiver, const std::string& property) {
        std::string whole;
        for (std::string part = nextPart(receiver, property); !part.empty();
             part = nextPart(receiver, property)) {
            EXPECT_LE(part.size(), 256u * 1024u);
            whole += part;
        }
        return whole;
    }

    // Asks for a long text; the announcement of its parts is taken, so that they come.
    void beginParts(Receiver& receiver, const std::string& property) {
        ASSERT_EQ(answerTo(receiver, "UTF8_STRING", property), receiver.atom(property));
        const RawProperty announced = receiver.takeProperty(property);
        ASSERT_EQ(announced.type, receiver.atom("INCR"));
        ASSERT_THAT(announced.numbers(), testing::ElementsAre(testing::Le(text.size())));
    }

    const XServer server;
    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    X11Clipboard clipboard{loop, server.display()};
    Receiver client{server.display()};
    const std::string text = longText(kMebibyte);
};

TEST_F(X11ClipboardServingTest, SendsItsTargets) {
    ASSERT_TRUE(clipboard.setText("text"));

    const RawProperty targets = received("TARGETS");

    EXPECT_EQ(targets.type, client.atom("ATOM"));
    EXPECT_THAT(targets.numbers(),
                IsSupersetOf({client.atom("TARGETS"), client.atom("TIMESTAMP"), client.atom("MULTIPLE"),
                              client.atom("UTF8_STRING"), client.atom("STRING"), client.atom("TEXT"),
                              client.atom("text/plain;charset=utf-8")}));
}

TEST_F(X11ClipboardServingTest, SendsEachFormWithItsType) {
    ASSERT_TRUE(clipboard.setText("\xc3\xa4\xe2\x82\xac"));

    for (const std::string utf8 : {"UTF8_STRING", "text/plain;charset=utf-8"}) {
        const RawProperty given = received(utf8);
        EXPECT_EQ(given.type, client.atom(utf8));
        EXPECT_EQ(given.bytes, "\xc3\xa4\xe2\x82\xac");
    }
    const RawProperty latin1 = received("STRING");
    EXPECT_EQ(latin1.type, client.atom("STRING"));
    EXPECT_EQ(latin1.bytes, "\xe4?");
    const RawProperty any = received("TEXT");
    EXPECT_EQ(any.type, client.atom("UTF8_STRING"));
    EXPECT_EQ(any.bytes, "\xc3\xa4\xe2\x82\xac");
}

TEST_F(X11ClipboardServingTest, SendsTheTimeOfCopying) {
    ASSERT_TRUE(clipboard.setText("text"));

    const RawProperty since = received("TIMESTAMP");

    EXPECT_EQ(since.type, client.atom("INTEGER"));
    ASSERT_EQ(since.numbers().size(), 1u);
    EXPECT_NE(since.numbers()[0], XCB_CURRENT_TIME);
    EXPECT_EQ(answerTo(client, "UTF8_STRING", "INTO", since.numbers()[0]), client.atom("INTO"));
    EXPECT_EQ(answerTo(client, "UTF8_STRING", "INTO", since.numbers()[0] - 1), XCB_ATOM_NONE)
        << "gave a text for a time at which it was not there";
}

TEST_F(X11ClipboardServingTest, SendsSeveralFormsAtOnce) {
    ASSERT_TRUE(clipboard.setText("\xc3\xa4"));
    const std::vector<std::uint32_t> pairs{
        client.atom("STRING"),  client.atom("ONE"),   client.atom("PIXMAP"),   client.atom("TWO"),
        client.atom("TEXT"),    client.atom("THREE"), client.atom("MULTIPLE"), client.atom("FOUR"),
        client.atom("TARGETS"), XCB_ATOM_NONE};
    client.setNumbers(client.window(), client.atom("INTO"), "ATOM_PAIR", pairs);

    const RawProperty answered = received("MULTIPLE");

    EXPECT_EQ(answered.type, client.atom("ATOM_PAIR"));
    std::vector<std::uint32_t> done = pairs;
    done[3] = XCB_ATOM_NONE;
    done[7] = XCB_ATOM_NONE;
    EXPECT_EQ(answered.numbers(), done);
    EXPECT_EQ(client.takeProperty("ONE").bytes, "\xe4");
    EXPECT_EQ(client.takeProperty("TWO").type, XCB_ATOM_NONE);
    EXPECT_EQ(client.takeProperty("THREE").bytes, "\xc3\xa4");
}

TEST_F(X11ClipboardServingTest, RefusesSeveralFormsThatAreNotNamed) {
    ASSERT_TRUE(clipboard.setText("text"));

    EXPECT_EQ(answerTo(client, "MULTIPLE", ""), XCB_ATOM_NONE);
    client.setText(client.window(), client.atom("INTO"), "ATOM_PAIR", "no numbers");
    EXPECT_EQ(answerTo(client, "MULTIPLE", "INTO"), XCB_ATOM_NONE);
    EXPECT_EQ(client.takeProperty("INTO").bytes, "no numbers") << "the receiver's own";
}

TEST_F(X11ClipboardServingTest, SendsSixtyFourFormsAtMost) {
    ASSERT_TRUE(clipboard.setText("text"));
    const auto answerToPairs = [&](std::size_t count) {
        client.setNumbers(client.window(), client.atom("INTO"), "ATOM_PAIR",
                          std::vector<std::uint32_t>(2 * count, client.atom("STRING")));
        return answerTo(client, "MULTIPLE", "INTO");
    };
    EXPECT_EQ(answerToPairs(64), client.atom("INTO"));
    EXPECT_EQ(answerToPairs(65), XCB_ATOM_NONE);
    EXPECT_EQ(answerToPairs(10'000), XCB_ATOM_NONE);
}

TEST_F(X11ClipboardServingTest, RefusesWhatIsNoText) {
    ASSERT_TRUE(clipboard.setText("text"));

    EXPECT_EQ(answerTo(client, "image/png", "INTO"), XCB_ATOM_NONE);
    EXPECT_EQ(client.takeProperty("INTO").type, XCB_ATOM_NONE);
}

TEST_F(X11ClipboardServingTest, ServesProgramsThatNameNoProperty) {
    ASSERT_TRUE(clipboard.setText("text"));

    EXPECT_EQ(answerTo(client, "UTF8_STRING", ""), client.atom("UTF8_STRING"));
    EXPECT_EQ(client.takeProperty("UTF8_STRING").bytes, "text");
}

TEST_F(X11ClipboardServingTest, SendsLongTextsInParts) {
    ASSERT_TRUE(clipboard.setText(text));

    beginParts(client, "INTO");

    EXPECT_TRUE(allParts(client, "INTO") == text);
    EXPECT_EQ(client.takeProperty("INTO").type, XCB_ATOM_NONE);
}

TEST_F(X11ClipboardServingTest, SendsPartsToSeveralEachAtItsOwnPace) {
    Receiver other(server.display());
    ASSERT_TRUE(clipboard.setText(text));
    beginParts(client, "INTO");
    beginParts(client, "SECOND");
    beginParts(other, "INTO");

    std::string slow = nextPart(client, "INTO");
    EXPECT_TRUE(allParts(other, "INTO") == text);
    slow += nextPart(client, "INTO");
    EXPECT_TRUE(allParts(client, "SECOND") == text);
    slow += allParts(client, "INTO");

    EXPECT_TRUE(slow == text);
}

TEST_F(X11ClipboardServingTest, FinishesPartsOfATextThatWasReplacedOrLost) {
    ASSERT_TRUE(clipboard.setText(text));
    beginParts(client, "INTO");
    ASSERT_TRUE(clipboard.setText("another"));
    std::string begun = nextPart(client, "INTO");

    const RawClient other(server.display());
    other.ownClipboard();
    begun += allParts(client, "INTO");

    EXPECT_TRUE(begun == text);
}

TEST_F(X11ClipboardServingTest, BeginsAnewWhereTheSameIsRequestedAgain) {
    ASSERT_TRUE(clipboard.setText(text));
    beginParts(client, "INTO");
    nextPart(client, "INTO");

    beginParts(client, "INTO");

    EXPECT_TRUE(allParts(client, "INTO") == text);
}

TEST_F(X11ClipboardServingTest, SurvivesAReceiverThatVanishesBetweenParts) {
    ASSERT_TRUE(clipboard.setText(text));
    {
        Receiver vanishing(server.display());
        beginParts(vanishing, "INTO");
        nextPart(vanishing, "INTO");
    }
    Receiver windowless(server.display());
    beginParts(windowless, "INTO");
    xcb_destroy_window(windowless.xcb(), windowless.window());
    windowless.flush();

    beginParts(client, "INTO");
    EXPECT_TRUE(allParts(client, "INTO") == text);
    EXPECT_TRUE(clipboard.setText("and goes on"));
    EXPECT_EQ(received("UTF8_STRING").bytes, "and goes on");
}

TEST_F(X11ClipboardServingTest, SurvivesAReceiverThatVanishesBeforeTheAnswer) {
    ASSERT_TRUE(clipboard.setText(text));
    for (const std::string target : {"UTF8_STRING", "TARGETS", "MULTIPLE", "image/png"}) {
        Receiver vanishing(server.display());
        const std::size_t windows = vanishing.windowCount();
        vanishing.request(target, "INTO");
        xcb_destroy_window(vanishing.xcb(), vanishing.window());
        EXPECT_EQ(vanishing.windowCount(), windows - 1) << "a round trip, so that it is done";
        loop->tick();
    }

    beginParts(client, "INTO");
    EXPECT_TRUE(allParts(client, "INTO") == text);
}

TEST_F(X11ClipboardServingTest, SurvivesRequestsInTheNameOfOurOwnWindow) {
    ASSERT_TRUE(clipboard.setText(text));
    const xcb_window_t ours = client.clipboardOwner();

    xcb_convert_selection(client.xcb(), ours, client.atom("CLIPBOARD"), client.atom("UTF8_STRING"),
                          client.atom("INTO"), XCB_CURRENT_TIME);
    // All parts can be taken, by whichever program: four, the announcement and the end.
    for (int parts = 0; parts < 6; ++parts) {
        EXPECT_EQ(client.clipboardOwner(), ours) << "a round trip, so that it is done";
        loop->tick();
        xcb_delete_property(client.xcb(), ours, client.atom("INTO"));
    }
    EXPECT_EQ(client.clipboardOwner(), ours);
    loop->tick();

    // Its window still receives the events that it needs.
    EXPECT_TRUE(clipboard.setText("text"));
    EXPECT_EQ(received("UTF8_STRING").bytes, "text");
}

TEST_F(X11ClipboardServingTest, ServesWhileItWaitsForAnother) {
    ASSERT_TRUE(clipboard.setText(text));
    beginParts(client, "INTO");
    std::string begun = nextPart(client, "INTO");
    loop->tick();
    // It answers only when it has received the next part but one, which only the waiting clipboard can send.
    const StrangeOwner other(
        server.display(), {[&](RawClient& owner, const xcb_selection_request_event_t& request) {
            begun += client.takeProperty("INTO").bytes;
            RawProperty part;
            const bool came = eventually(
                [&] {
                    part = client.takeProperty("INTO");
                    return part.type != XCB_ATOM_NONE;
                },
                std::chrono::milliseconds(500));
            begun += part.bytes;
            owner.setText(request.requestor, request.property, "UTF8_STRING", came ? "served" : "not served");
            owner.answer(request, request.property);
        }});

    EXPECT_EQ(clipboard.text(), "served");
    EXPECT_EQ(begun.size(), 3u * 256u * 1024u);
    begun += allParts(client, "INTO");
    EXPECT_TRUE(begun == text);
}

} // namespace
