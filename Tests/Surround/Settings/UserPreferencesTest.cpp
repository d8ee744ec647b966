#include "Surround/Settings/UserPreferences.h"

#include "DemoGain_ViewLayout.h"
#include "Files/FileError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>

namespace varno::test {
namespace {

class UserPreferencesTest : public testing::Test {
protected:
    UserPreferences preferences(const std::string& content) const {
        return UserPreferences(mFolder.write("window.txt", content));
    }
    std::string content() const { return readFile(mFolder / "window.txt"); }

    TemporaryFolder mFolder;
};

TEST_F(UserPreferencesTest, chooseNothingAtFirst) {
    const UserPreferences none(mFolder / "sub/window.txt");
    EXPECT_EQ(none.size(), std::nullopt);
    EXPECT_FALSE(none.isCurveShown());
    EXPECT_EQ(mFolder.listing(), "") << "reading makes nothing";
}

TEST_F(UserPreferencesTest, areKept) {
    UserPreferences first(mFolder / "sub/window.txt");
    for (const double size : kWindowSizes) {
        first.setSize(size);
        EXPECT_EQ(first.size(), size);
        EXPECT_EQ(UserPreferences(mFolder / "sub/window.txt").size(), size);
    }
    first.setCurveShown(true);
    EXPECT_EQ(readFile(mFolder / "sub/window.txt"), "size 3\ncurve shown\n");
    EXPECT_TRUE(UserPreferences(mFolder / "sub/window.txt").isCurveShown());
    first.setCurveShown(false);
    EXPECT_FALSE(first.isCurveShown());
    EXPECT_EQ(readFile(mFolder / "sub/window.txt"), "size 3\ncurve hidden\n");
}

TEST(WindowSizes, areThoseThatTheEditorIsDrawnFor) {
    std::set<double> drawn;
    for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
        drawn.insert(scale.mFactor);
    }
    EXPECT_EQ(std::set<double>(kWindowSizes.begin(), kWindowSizes.end()), drawn);
}

TEST_F(UserPreferencesTest, areReadWithBlanks) {
    const auto read = preferences("  size\t 1.25 \r\n\n curve  shown");
    EXPECT_EQ(read.size(), 1.25);
    EXPECT_TRUE(read.isCurveShown());
}

TEST_F(UserPreferencesTest, ignoreDamagedValues) {
    for (const char* text :
         {"size", "size 0", "size 1.3", "size 1.25x", "size nan", "size -1", "size 1 2", "Size 2", "size1",
          "curve", "curve yes", "curve shown now", "\xFF\xFE size 2", "=\n\n\n"}) {
        const auto read = preferences(text);
        EXPECT_EQ(read.size(), std::nullopt) << text;
        EXPECT_FALSE(read.isCurveShown()) << text;
    }
    const auto tooLong = preferences("size 2\n" + std::string(70000, '\n'));
    EXPECT_EQ(tooLong.size(), std::nullopt);
}

TEST_F(UserPreferencesTest, keepUnknownLines) {
    auto read = preferences("# mine\n\nfont 12\nsize wrong\ncurve shown\nlast");
    read.setSize(0.75);
    EXPECT_EQ(content(), "# mine\n\nfont 12\nsize 0.75\ncurve shown\nlast\n");
}

TEST_F(UserPreferencesTest, keepWhatAnotherProgramHasChosen) {
    UserPreferences first(mFolder / "window.txt");
    UserPreferences second(mFolder / "window.txt");
    first.setSize(2.0);
    second.setCurveShown(true);
    EXPECT_EQ(content(), "size 2\ncurve shown\n");
    EXPECT_FALSE(first.isCurveShown());
    first.reread();
    EXPECT_TRUE(first.isCurveShown());
    EXPECT_EQ(second.size(), 2.0);
}

TEST_F(UserPreferencesTest, holdWhereNothingCanBeWritten) {
    UserPreferences unnamed{std::filesystem::path()};
    unnamed.setSize(2.0);
    EXPECT_EQ(unnamed.size(), 2.0);
    mFolder.write("file", "");
    UserPreferences refused(mFolder / "file/window.txt");
    EXPECT_THROW(refused.setCurveShown(true), FileError);
    EXPECT_TRUE(refused.isCurveShown());
}

} // namespace
} // namespace varno::test
