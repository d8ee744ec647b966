#include "Platform/X11/X11Clipboard.h"

#include "Tests/Source/Platform/X11/RawClient.h"
#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/XServer.h"

#include <gtest/gtest.h>

namespace {

using varno::RunLoop;
using varno::X11Clipboard;
using namespace varno::test;

// With a program of another project: xclip.
class X11ClipboardProgramTest : public testing::Test {
protected:
    // What xclip pastes while our loop is driven.
    std::string pastedBy(const std::string& target) {
        Subprocess xclip(
            {"xclip", "-display", server.display(), "-selection", "clipboard", "-o", "-t", target});
        EXPECT_TRUE(eventually([&] {
            loop->tick();
            return xclip.status().has_value();
        }));
        EXPECT_EQ(xclip.status(), 0);
        return xclip.out();
    }

    // An xclip that owns the clipboard with the text, until the object is destroyed.
    std::unique_ptr<Subprocess> copies(const std::string& text) {
        // The server assigns numbers of windows again, so the previous owner must be one that still exists.
        const RawClient before(server.display());
        before.ownClipboard();
        auto xclip =
            std::make_unique<Subprocess>(std::vector<std::string>{"xclip", "-display", server.display(),
                                                                  "-selection", "clipboard", "-quiet", "-i"},
                                         Surroundings{.input = text});
        EXPECT_TRUE(eventually([&] { return before.clipboardOwner() != before.window(); }));
        return xclip;
    }

    const XServer server;
    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    X11Clipboard clipboard{loop, server.display()};
};

TEST_F(X11ClipboardProgramTest, PastesWhatWasSet) {
    const std::string text = "Gain 0.5000000000\n\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\x9b";

    ASSERT_TRUE(clipboard.setText(text));

    EXPECT_EQ(pastedBy("UTF8_STRING"), text);
    EXPECT_EQ(pastedBy("text/plain;charset=utf-8"), text);
    EXPECT_EQ(pastedBy("TEXT"), text);
    EXPECT_EQ(pastedBy("STRING"), "Gain 0.5000000000\n\xe4??");
}

TEST_F(X11ClipboardProgramTest, PastesLargeTexts) {
    for (const int bytes : {256 * 1024 - 1, 256 * 1024, 256 * 1024 + 1, 512 * 1024, 1024 * 1024, 5000000}) {
        const std::string text = longText(static_cast<std::size_t>(bytes));

        ASSERT_TRUE(clipboard.setText(text));

        EXPECT_TRUE(pastedBy("UTF8_STRING") == text) << bytes;
    }
}

TEST_F(X11ClipboardProgramTest, PastesTheTextSetLast) {
    ASSERT_TRUE(clipboard.setText("first"));
    ASSERT_TRUE(clipboard.setText("last"));

    EXPECT_EQ(pastedBy("UTF8_STRING"), "last");
}

TEST_F(X11ClipboardProgramTest, PastesAnEmptyText) {
    ASSERT_TRUE(clipboard.setText(""));

    EXPECT_EQ(pastedBy("UTF8_STRING"), "");
}

TEST_F(X11ClipboardProgramTest, CopiesWhatIsRead) {
    for (const std::string text :
         {"a", "Varno-S 030001\nGain 0.5", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\x9b\t\r\n"}) {
        const auto xclip = copies(text);

        EXPECT_EQ(clipboard.text(), text);
    }
}

TEST_F(X11ClipboardProgramTest, CopiesLargeTexts) {
    for (const std::size_t bytes : {std::size_t{300000}, kMebibyte}) {
        const std::string text = longText(bytes);
        const auto xclip = copies(text);

        EXPECT_TRUE(clipboard.text() == text) << bytes;
    }
}

TEST_F(X11ClipboardProgramTest, CopiesMoreThanIsRead) {
    const auto xclip = copies(longText(kMebibyte + 1));

    EXPECT_EQ(clipboard.text(), std::nullopt);
}

TEST_F(X11ClipboardProgramTest, TakesTheClipboardAwayAndLosesItAgain) {
    ASSERT_TRUE(clipboard.setText("ours"));
    {
        const auto xclip = copies("theirs");
        EXPECT_EQ(clipboard.text(), "theirs");
    }
    EXPECT_EQ(clipboard.text(), std::nullopt);

    ASSERT_TRUE(clipboard.setText("ours again"));
    EXPECT_EQ(pastedBy("UTF8_STRING"), "ours again");
}

} // namespace
