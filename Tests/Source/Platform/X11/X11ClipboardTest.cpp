#include "Platform/X11/X11Clipboard.h"

#include "Tests/Source/Platform/X11/RawClient.h"
#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/XServer.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>

namespace {

using namespace std::chrono_literals;
using varno::Clipboard;
using varno::Registration;
using varno::RunLoop;
using varno::X11Clipboard;
using namespace varno::test;

std::size_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

class X11ClipboardTest : public testing::Test {
protected:
    // Ends the server. Another one may get its display at once, so the environment then names a display that
    // does not exist.
    void loseServer() {
        server.stop();
        setenv("DISPLAY", "no-such-display", 1);
    }

    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    XServer server;
};

TEST_F(X11ClipboardTest, ReadsItsOwnTextWithoutTheLoop) {
    X11Clipboard clipboard(loop, server.display());
    const std::string text = longText(5 * kMebibyte);

    ASSERT_TRUE(clipboard.setText(text));

    EXPECT_TRUE(clipboard.text() == text);
    EXPECT_TRUE(clipboard.text() == text);
}

TEST_F(X11ClipboardTest, KeepsWhatATextHasWithin) {
    X11Clipboard clipboard(loop, server.display());
    const std::string text("a\0b\xff", 4);

    ASSERT_TRUE(clipboard.setText(text));

    EXPECT_EQ(clipboard.text(), text);
}

TEST_F(X11ClipboardTest, ReleasesItsTextWhenAnotherTakesTheClipboard) {
    X11Clipboard clipboard(loop, server.display());
    ASSERT_TRUE(clipboard.setText("ours"));
    const RawClient other(server.display());

    xcb_set_selection_owner(other.xcb(), XCB_WINDOW_NONE, other.atom("CLIPBOARD"), XCB_CURRENT_TIME);
    EXPECT_EQ(other.clipboardOwner(), XCB_WINDOW_NONE);

    EXPECT_EQ(clipboard.text(), std::nullopt);
}

TEST_F(X11ClipboardTest, TakesTheClipboardBackBeforeItIsNotifiedOfTheLoss) {
    X11Clipboard clipboard(loop, server.display());
    const RawClient other(server.display());
    for (int rounds = 0; rounds < 50; ++rounds) {
        ASSERT_TRUE(clipboard.setText("ours"));
        other.ownClipboard();
        ASSERT_TRUE(clipboard.setText("ours again"));
        loop->tick();

        EXPECT_EQ(clipboard.text(), "ours again");
    }
}

TEST_F(X11ClipboardTest, GivesUpATextWhoseOwnerNeedsTheThreadThatWaits) {
    X11Clipboard owning(loop, server.display());
    X11Clipboard reading(loop, server.display());
    ASSERT_TRUE(owning.setText("text"));

    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(reading.text(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
}

TEST_F(X11ClipboardTest, LosesTheTextWithTheClipboardObject) {
    {
        X11Clipboard clipboard(loop, server.display());
        ASSERT_TRUE(clipboard.setText("text"));
    }

    EXPECT_EQ(RawClient(server.display()).clipboardOwner(), XCB_WINDOW_NONE);
    EXPECT_EQ(X11Clipboard(loop, server.display()).text(), std::nullopt);
}

TEST_F(X11ClipboardTest, WithoutADisplayHasNothingAndTakesNothing) {
    const auto before = std::chrono::steady_clock::now();
    X11Clipboard clipboard(loop, "no-such-display");

    EXPECT_FALSE(clipboard.setText("text"));
    EXPECT_EQ(clipboard.text(), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
}

TEST_F(X11ClipboardTest, UsesTheDisplayOfTheEnvironmentWhereNoneIsNamed) {
    X11Clipboard clipboard(loop);
    unsetenv("DISPLAY");
    EXPECT_FALSE(clipboard.setText("text"));

    setenv("DISPLAY", server.display().c_str(), 1);
    EXPECT_TRUE(clipboard.setText("text"));
    EXPECT_NE(RawClient(server.display()).clipboardOwner(), XCB_WINDOW_NONE);
}

// Counts the descriptors that a loop watches.
class DescriptorCount {
public:
    explicit DescriptorCount(RunLoop& loop)
        : mWatching(loop.addWatcher({[this](int) { ++mCount; }, [this](int) { --mCount; }})) {}
    int now() const { return mCount; }

private:
    int mCount = 0;
    Registration mWatching;
};

TEST_F(X11ClipboardTest, GivesUpAConnectionThatIsLost) {
    setenv("DISPLAY", server.display().c_str(), 1);
    X11Clipboard clipboard(loop);
    const DescriptorCount known(*loop);
    ASSERT_TRUE(clipboard.setText("text"));
    EXPECT_EQ(known.now(), 1);

    loseServer();
    EXPECT_TRUE(eventually([&] {
        loop->tick();
        return known.now() == 0;
    }));

    EXPECT_EQ(clipboard.text(), std::nullopt);
    EXPECT_FALSE(clipboard.setText("text"));
}

TEST_F(X11ClipboardTest, FindsAConnectionLostWhenItIsUsed) {
    const std::size_t files = openFiles();
    setenv("DISPLAY", server.display().c_str(), 1);
    X11Clipboard setting(loop);
    X11Clipboard reading(loop);
    ASSERT_TRUE(setting.setText("text"));
    ASSERT_TRUE(reading.setText("text"));

    loseServer();

    EXPECT_FALSE(setting.setText("text"));
    EXPECT_EQ(reading.text(), std::nullopt);
    EXPECT_EQ(openFiles(), files - Subprocess::kDescriptors) << "without those of the server's program";
}

TEST_F(X11ClipboardTest, GoesOnWithAServerThatComesAfterALoss) {
    X11Clipboard clipboard(loop);
    setenv("DISPLAY", server.display().c_str(), 1);
    ASSERT_TRUE(clipboard.setText("old"));
    loseServer();
    EXPECT_EQ(clipboard.text(), std::nullopt);

    const XServer next;
    setenv("DISPLAY", next.display().c_str(), 1);

    EXPECT_TRUE(clipboard.setText("new"));
    EXPECT_EQ(clipboard.text(), "new");
}

TEST_F(X11ClipboardTest, LeavesNoFilesAndWindowsBehind) {
    const RawClient other(server.display());
    const std::size_t files = openFiles();
    const std::size_t windows = other.windowCount();
    for (int rounds = 0; rounds < 100; ++rounds) {
        X11Clipboard clipboard(loop, server.display());
        ASSERT_TRUE(clipboard.setText("text"));
        loop->tick();
        ASSERT_EQ(clipboard.text(), "text");
    }

    EXPECT_EQ(openFiles(), files);
    // The server destroys a client's windows some time after the client has disconnected.
    EXPECT_TRUE(eventually([&] { return other.windowCount() == windows; }));
}

TEST_F(X11ClipboardTest, HasOneFileAndOneWindowHoweverOftenUsed) {
    const RawClient other(server.display());
    X11Clipboard clipboard(loop, server.display());
    ASSERT_TRUE(clipboard.setText("text"));
    const std::size_t files = openFiles();
    const std::size_t windows = other.windowCount();

    for (int rounds = 0; rounds < 500; ++rounds) {
        ASSERT_TRUE(clipboard.setText(longText(300000)));
        other.request("UTF8_STRING", "INTO");
        loop->tick();
        xcb_set_selection_owner(other.xcb(), XCB_WINDOW_NONE, other.atom("CLIPBOARD"), XCB_CURRENT_TIME);
        ASSERT_EQ(other.clipboardOwner(), XCB_WINDOW_NONE);
        ASSERT_EQ(clipboard.text(), std::nullopt);
    }

    EXPECT_EQ(openFiles(), files);
    EXPECT_EQ(other.windowCount(), windows);
}

TEST_F(X11ClipboardTest, OfTheModuleIsOneForAllWhoHoldItAndIsServedByTheSharedLoop) {
    setenv("DISPLAY", server.display().c_str(), 1);
    const auto one = Clipboard::shared();
    const DescriptorCount known(*RunLoop::shared());

    ASSERT_TRUE(one->setText("text"));

    EXPECT_EQ(Clipboard::shared(), one);
    EXPECT_EQ(known.now(), 1);
    EXPECT_EQ(Clipboard::shared()->text(), "text");
}

TEST_F(X11ClipboardTest, OfTheModuleGoesWithTheLastHolder) {
    setenv("DISPLAY", server.display().c_str(), 1);
    const auto held = RunLoop::shared();
    const DescriptorCount known(*held);
    auto one = Clipboard::shared();
    auto other = Clipboard::shared();
    ASSERT_TRUE(one->setText("text"));

    one.reset();
    EXPECT_EQ(known.now(), 1);
    other.reset();
    EXPECT_EQ(known.now(), 0);

    EXPECT_EQ(Clipboard::shared()->text(), std::nullopt);
}

} // namespace
