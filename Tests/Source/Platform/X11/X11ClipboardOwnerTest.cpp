#include "Platform/X11/X11Clipboard.h"

#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Source/Platform/X11/StrangeOwner.h"
#include "Tests/Support/XServer.h"

#include <chrono>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace {

using namespace std::chrono_literals;
using varno::RunLoop;
using varno::X11Clipboard;
using namespace varno::test;
using Request = xcb_selection_request_event_t;
using Change = xcb_property_notify_event_t;

// Reads from programs that misbehave: whatever they do, a read returns within a second.
class X11ClipboardOwnerTest : public testing::Test {
protected:
    std::optional<std::string> textWithin(std::chrono::milliseconds limit) {
        const auto before = std::chrono::steady_clock::now();
        auto text = clipboard.text();
        EXPECT_LT(std::chrono::steady_clock::now() - before, limit);
        return text;
    }

    // Begins to send by parts, and sends this one over and over.
    static StrangeOwner::Behaviour endless(const std::string& part) {
        return {begin, [part](RawClient& client, const Change& change) {
                    client.setText(change.window, change.atom, "UTF8_STRING", part);
                }};
    }

    static void begin(RawClient& client, const Request& request) {
        client.listenTo(request.requestor);
        client.setNumbers(request.requestor, request.property, "INCR", {1});
        client.answer(request, request.property);
    }

    static void refuse(RawClient& client, const Request& request) { client.answer(request, XCB_ATOM_NONE); }

    static bool asksFor(const RawClient& client, const Request& request, const std::string& target) {
        return request.target == client.atom(target);
    }

    static constexpr std::chrono::milliseconds kASecond = 1s;

    const XServer server;
    X11Clipboard clipboard{std::make_shared<RunLoop>(), server.display()};
};

TEST_F(X11ClipboardOwnerTest, ThereIsNone) {
    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, IsSilent) {
    const StrangeOwner owner(server.display(), {[](RawClient&, const Request&) {}});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, EndsOnARequest) {
    const StrangeOwner owner(server.display(),
                             {[](RawClient& client, const Request&) { client.disconnect(); }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, Refuses) {
    const StrangeOwner owner(server.display(), {refuse});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, RefusesWithoutNamingTheTime) {
    int asked = 0;
    {
        const StrangeOwner owner(server.display(), {[&asked](RawClient& client, Request request) {
                                     ++asked;
                                     request.time = XCB_CURRENT_TIME;
                                     refuse(client, request);
                                 }});
        EXPECT_EQ(textWithin(kASecond), std::nullopt);
    }

    EXPECT_EQ(asked, 2) << "the first refusal was not understood";
}

TEST_F(X11ClipboardOwnerTest, HasTheTextInLatin1Only) {
    const StrangeOwner owner(server.display(), {[](RawClient& client, const Request& request) {
                                 if (!asksFor(client, request, "STRING")) {
                                     return refuse(client, request);
                                 }
                                 client.setText(request.requestor, request.property, "STRING", "d\xe4nisch");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), "d\xc3\xa4nisch");
}

TEST_F(X11ClipboardOwnerTest, SendsAnotherFormOfTextThanRequested) {
    const StrangeOwner owner(server.display(), {[](RawClient& client, const Request& request) {
                                 client.setText(request.requestor, request.property, "STRING", "\xe4");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), "\xc3\xa4");
}

TEST_F(X11ClipboardOwnerTest, SendsSomethingThatIsNoText) {
    for (const std::string type : {"INTEGER", "ATOM", "image/png"}) {
        const StrangeOwner owner(server.display(), {[type](RawClient& client, const Request& request) {
                                     client.setText(request.requestor, request.property, type, "text");
                                     client.answer(request, request.property);
                                 }});

        EXPECT_EQ(textWithin(kASecond), std::nullopt) << type;
    }
}

TEST_F(X11ClipboardOwnerTest, SendsNumbersAsText) {
    const StrangeOwner owner(
        server.display(), {[](RawClient& client, const Request& request) {
            client.setNumbers(request.requestor, request.property, "UTF8_STRING", {65, 66});
            client.answer(request, request.property);
        }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, ReportsAnAnswerThatItDidNotSend) {
    const StrangeOwner owner(server.display(), {[](RawClient& client, const Request& request) {
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, AnswersForAnotherPropertyAndTargetFirst) {
    const StrangeOwner owner(server.display(), {[](RawClient& client, const Request& request) {
                                 client.setText(request.requestor, client.atom("WRONG"), "UTF8_STRING",
                                                "wrong");
                                 client.answer(request, client.atom("WRONG"));
                                 Request other = request;
                                 other.target = client.atom("TARGETS");
                                 client.answer(other, request.property);
                                 client.setText(request.requestor, request.property, "UTF8_STRING", "right");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), "right");
}

TEST_F(X11ClipboardOwnerTest, AnswersWhenItIsTooLate) {
    std::vector<Request> asked;
    const StrangeOwner owner(server.display(), {[&asked](RawClient& client, const Request& request) {
                                 asked.push_back(request);
                                 if (asked.size() < 2) {
                                     return;
                                 }
                                 client.setText(request.requestor, asked[0].property, "UTF8_STRING", "late");
                                 client.answer(asked[0], asked[0].property);
                                 client.setText(request.requestor, request.property, "UTF8_STRING",
                                                "in time");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
    EXPECT_EQ(textWithin(kASecond), "in time");
}

TEST_F(X11ClipboardOwnerTest, RefusesWhenItIsTooLate) {
    std::vector<Request> asked;
    const StrangeOwner owner(server.display(), {[&asked](RawClient& client, const Request& request) {
                                 asked.push_back(request);
                                 if (asked.size() < 2) {
                                     return;
                                 }
                                 refuse(client, asked[0]);
                                 if (!asksFor(client, request, "UTF8_STRING")) {
                                     return refuse(client, request);
                                 }
                                 client.setText(request.requestor, request.property, "UTF8_STRING",
                                                "in time");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
    EXPECT_EQ(textWithin(kASecond), "in time");
}

TEST_F(X11ClipboardOwnerTest, SendsAllOfTheLargestTextAtOnce) {
    const std::string text = longText(kMebibyte);
    const StrangeOwner owner(server.display(), {[&](RawClient& client, const Request& request) {
                                 client.setText(request.requestor, request.property, "UTF8_STRING", text);
                                 client.answer(request, request.property);
                             }});

    EXPECT_TRUE(textWithin(kASecond) == text);
}

TEST_F(X11ClipboardOwnerTest, SendsTooMuchAtOnce) {
    const std::string text = longText(kMebibyte + 1);
    const StrangeOwner owner(server.display(), {[&](RawClient& client, const Request& request) {
                                 client.setText(request.requestor, request.property, "UTF8_STRING", text);
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, SendsPartsWithoutEnd) {
    const StrangeOwner owner(server.display(), endless("a"));

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, SendsLargePartsWithoutEnd) {
    const StrangeOwner owner(server.display(), endless(std::string(200000, 'a')));

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, BeginsToSendPartsAndSendsNone) {
    const StrangeOwner owner(server.display(), {begin});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, EndsBetweenParts) {
    int parts = 0;
    const StrangeOwner owner(server.display(), {begin, [&parts](RawClient& client, const Change& change) {
                                                    client.setText(change.window, change.atom, "UTF8_STRING",
                                                                   "part");
                                                    if (++parts == 3) {
                                                        client.disconnect();
                                                    }
                                                }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, SendsPartsOfDifferentKinds) {
    int parts = 0;
    const StrangeOwner owner(server.display(), {[&parts](RawClient& client, const Request& request) {
                                                    parts = 0;
                                                    begin(client, request);
                                                },
                                                [&parts](RawClient& client, const Change& change) {
                                                    const std::string type =
                                                        parts == 1 ? "STRING" : "UTF8_STRING";
                                                    const std::string text = parts < 2 ? "part" : "";
                                                    ++parts;
                                                    client.setText(change.window, change.atom, type, text);
                                                }});

    EXPECT_EQ(textWithin(kASecond), std::nullopt);
}

TEST_F(X11ClipboardOwnerTest, SendsPartsOfLatin1) {
    int parts = 0;
    const StrangeOwner owner(server.display(), {begin, [&parts](RawClient& client, const Change& change) {
                                                    const std::string text = parts++ < 3 ? "\xe4" : "";
                                                    client.setText(change.window, change.atom, "STRING",
                                                                   text);
                                                }});

    EXPECT_EQ(textWithin(kASecond), "\xc3\xa4\xc3\xa4\xc3\xa4");
}

TEST_F(X11ClipboardOwnerTest, SendsAnEmptyTextByParts) {
    const StrangeOwner owner(server.display(), endless(""));

    EXPECT_EQ(textWithin(kASecond), "");
}

TEST_F(X11ClipboardOwnerTest, IsReplacedByAGoodOneAfterManyBadRounds) {
    for (int rounds = 0; rounds < 20; ++rounds) {
        const StrangeOwner owner(server.display(), endless(std::string(600000, 'a')));
        EXPECT_EQ(textWithin(kASecond), std::nullopt);
    }
    const StrangeOwner owner(server.display(), {[](RawClient& client, const Request& request) {
                                 client.setText(request.requestor, request.property, "UTF8_STRING", "good");
                                 client.answer(request, request.property);
                             }});

    EXPECT_EQ(textWithin(kASecond), "good");
}

} // namespace
