// A text that is handed over to the desktop's clipboard manager when a view closes.
#include "Platform/X11/X11Clipboard.h"

#include "Tests/Source/Platform/X11/RawClient.h"
#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Support/XServer.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <thread>

namespace {

using varno::RunLoop;
using varno::X11Clipboard;
using namespace varno::test;

// Owns the manager's selection, on a thread of its own: the test's thread waits for it. Saves the text that
// it is asked to save and owns the clipboard from then on, refuses, or does not answer.
class Manager {
public:
    enum class Manner { kSaves, kRefuses, kIsSilent };

    Manager(const std::string& display, Manner manner)
        : mClient(display),
          mManner(manner) {
        xcb_set_selection_owner(mClient.xcb(), mClient.window(), mClient.atom("CLIPBOARD_MANAGER"),
                                XCB_CURRENT_TIME);
        mClient.flush();
        EXPECT_NE(mClient.atom("any"), xcb_atom_t{XCB_ATOM_NONE}) << "a reply: the server has come so far";
        mThread = std::thread([this] { run(); });
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;
    ~Manager() { stop(); }

    void stop() {
        mStop = true;
        if (mThread.joinable()) {
            mThread.join();
        }
    }

    // To be read when it has stopped.
    std::vector<std::string> saved;
    int requests = 0;

private:
    void run() {
        constexpr int kLookUpMs = 2;
        while (!mStop) {
            while (const RawEvent event = mClient.nextEvent()) {
                handle(*event);
            }
            pollfd wait{xcb_get_file_descriptor(mClient.xcb()), POLLIN, 0};
            poll(&wait, 1, kLookUpMs);
        }
    }

    void handle(const xcb_generic_event_t& event) {
        if (typeOfRaw(event) == XCB_SELECTION_REQUEST) {
            const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
            if (request.target == mClient.atom("SAVE_TARGETS")) {
                ++requests;
                begin(request);
            }
        } else if (typeOfRaw(event) == XCB_SELECTION_NOTIFY && mRequest) {
            saved.push_back(mClient.takeProperty("SAVED").bytes);
            mClient.ownClipboard();
            mClient.answer(*mRequest, mRequest->property);
            mClient.flush();
        }
    }

    // Answers that are none to the request, long before that to it.
    void refuseOthersLike(const xcb_selection_request_event_t& request) const {
        auto other = request;
        other.selection = XCB_ATOM_PRIMARY;
        mClient.answer(other, XCB_ATOM_NONE);
        other = request;
        other.target = mClient.atom("TARGETS");
        mClient.answer(other, XCB_ATOM_NONE);
        mClient.flush();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    void begin(const xcb_selection_request_event_t& request) {
        if (mManner == Manner::kSaves) {
            refuseOthersLike(request);
            mRequest = request;
            mClient.request("UTF8_STRING", "SAVED");
        } else if (mManner == Manner::kRefuses) {
            mClient.answer(request, XCB_ATOM_NONE);
        }
        mClient.flush();
    }

    RawClient mClient;
    Manner mManner;
    std::optional<xcb_selection_request_event_t> mRequest;
    std::atomic<bool> mStop{false};
    std::thread mThread;
};

class X11ClipboardManagerTest : public testing::Test {
protected:
    const XServer server;
    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    X11Clipboard clipboard{loop, server.display()};
};

TEST_F(X11ClipboardManagerTest, SavesTheTextWithoutTheLoop) {
    Manager manager(server.display(), Manager::Manner::kSaves);
    ASSERT_TRUE(clipboard.setText("first"));
    clipboard.handOver();
    clipboard.handOver();
    ASSERT_TRUE(clipboard.setText("second"));
    clipboard.handOver();
    manager.stop();
    EXPECT_EQ(manager.saved, (std::vector<std::string>{"first", "second"})) << "each once";
}

TEST_F(X11ClipboardManagerTest, OwnsTheClipboardAfterwards) {
    Manager manager(server.display(), Manager::Manner::kSaves);
    ASSERT_TRUE(clipboard.setText("text"));
    clipboard.handOver();
    const RawClient other(server.display());
    EXPECT_NE(other.clipboardOwner(), XCB_WINDOW_NONE);
    manager.stop();
    EXPECT_EQ(manager.saved.size(), 1U);
}

TEST_F(X11ClipboardManagerTest, MayRefuseOrKeepSilent) {
    for (const auto manner : {Manager::Manner::kRefuses, Manager::Manner::kIsSilent}) {
        Manager manager(server.display(), manner);
        ASSERT_TRUE(clipboard.setText("text"));
        clipboard.handOver();
        EXPECT_EQ(clipboard.text(), "text") << "the module still has it";
        manager.stop();
        EXPECT_EQ(manager.requests, 1);
    }
}

TEST_F(X11ClipboardManagerTest, IsNotAskedForTheTextOfOthers) {
    Manager manager(server.display(), Manager::Manner::kSaves);
    clipboard.handOver(); // nothing was copied
    ASSERT_TRUE(clipboard.setText("text"));
    const RawClient other(server.display());
    other.ownClipboard();
    EXPECT_EQ(other.clipboardOwner(), other.window());
    clipboard.handOver();
    manager.stop();
    EXPECT_EQ(manager.requests, 0);
}

TEST_F(X11ClipboardManagerTest, IsNotThere) {
    ASSERT_TRUE(clipboard.setText("text"));
    clipboard.handOver();
    EXPECT_EQ(clipboard.text(), "text");
}

} // namespace
