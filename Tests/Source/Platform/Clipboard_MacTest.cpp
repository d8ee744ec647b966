#include "Tests/Source/Platform/X11/SampleText.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>

namespace {

namespace fs = std::filesystem;
using namespace varno::test;

// GNUstep keeps the pasteboard in a server, and a second server notifies it of programs that start and end.
// Both belong to the test: programs find them by names in a folder for temporary files, which they take from
// the environment when they start. Therefore other programs use the pasteboard here, never this one.
class PasteboardServers {
public:
    PasteboardServers() {
        mNotifications.emplace(std::vector<std::string>{"gdnc", "--no-fork"});
        EXPECT_TRUE(eventually([this] { return namesKnown() == 1; }));
        mPasteboard.emplace(std::vector<std::string>{"gpbs", "--no-fork"});
        EXPECT_TRUE(eventually([this] { return namesKnown() == 2; }));
    }

    const fs::path& folder() const { return mFolder.path(); }

private:
    std::ptrdiff_t namesKnown() const {
        std::error_code none;
        const fs::directory_iterator names(mFolder.path() / "NSMessagePort/names", none);
        return none ? 0 : std::distance(begin(names), end(names));
    }

    TemporaryFolder mFolder;
    EnvironmentVariable mTemporary{"TEMP", mFolder.path()};
    EnvironmentVariable mHome{"HOME", mFolder.path()};
    std::optional<Subprocess> mNotifications;
    std::optional<Subprocess> mPasteboard;
};

class ClipboardMacTest : public testing::Test {
protected:
    // What the pasteboard program prints for this command; nothing where it fails.
    std::optional<std::string> told(const std::vector<std::string>& command) const {
        std::vector<std::string> words{VARNO_PASTEBOARD_PROGRAM};
        words.insert(words.end(), command.begin(), command.end());
        const Outcome outcome = run(words);
        return outcome.status == 0 ? std::optional(outcome.out) : std::nullopt;
    }

    bool set(const std::string& text) const {
        const fs::path file = servers.folder() / "text";
        std::ofstream(file) << text;
        return told({"set", file}).has_value();
    }

    const PasteboardServers servers;
};

const std::string kText = "Varno-S 030001\nGain 0.5 \xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\x9b";

TEST_F(ClipboardMacTest, HasTheTextThatWasSetLast) {
    ASSERT_TRUE(set("first"));
    ASSERT_TRUE(set(kText));

    EXPECT_EQ(told({"get"}), kText);
}

TEST_F(ClipboardMacTest, HasLongTexts) {
    const std::string text = longText(kMebibyte);

    ASSERT_TRUE(set(text));

    EXPECT_TRUE(told({"get"}) == text);
}

TEST_F(ClipboardMacTest, GivesItsTextToOtherPrograms) {
    ASSERT_TRUE(set(kText));

    EXPECT_EQ(told({"paste"}), kText);
}

TEST_F(ClipboardMacTest, HasTheTextOfOtherPrograms) {
    ASSERT_TRUE(set("ours"));
    ASSERT_TRUE(told({"copy", kText}));

    EXPECT_EQ(told({"get"}), kText);
}

TEST_F(ClipboardMacTest, HasNoTextAtFirst) {
    EXPECT_EQ(told({"get"}), std::nullopt);
}

TEST_F(ClipboardMacTest, HasNoTextWhereAnotherProgramCopiedSomethingElse) {
    ASSERT_TRUE(set("ours"));
    ASSERT_TRUE(told({"color"}));

    EXPECT_EQ(told({"get"}), std::nullopt);
}

} // namespace
