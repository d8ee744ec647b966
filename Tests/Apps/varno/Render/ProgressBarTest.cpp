#include "Render/ProgressBar.h"
#include "CommandLine/Console.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sstream>
#include <thread>
#include <unistd.h>
#include <vector>

namespace varno::test {
namespace {

using namespace std::chrono_literals;

class ProgressBarTest : public testing::Test {
protected:
    ProgressBar::Clock clock() {
        return [this] { return mNow; };
    }

    ProgressBar::Draw draw() {
        return [this](std::string_view text) { mOut << text; };
    }

    ProgressBar::Columns columns() {
        return [this] { return mColumns; };
    }

    std::ostringstream mOut;
    std::size_t mColumns = 80;
    ProgressBar::TimePoint mNow{};
};

TEST_F(ProgressBarTest, WritesNothingWhereThereIsNoTerminal) {
    {
        ProgressBar bar(draw(), false, columns(), clock());
        mNow += 5s;
        bar.advance(5.0, 0.5);
        bar.finish();
    }
    EXPECT_EQ(mOut.str(), "");
}

TEST_F(ProgressBarTest, ShowsShareSpeedAndTimeLeft) {
    ProgressBar bar(draw(), true, columns(), clock());
    mNow += 2s;
    bar.advance(150.0, 0.25);
    EXPECT_EQ(mOut.str(), "\r\033[K[#######                       ] 25 %, 75 x real time, 0:06 left");
}

TEST_F(ProgressBarTest, ShowsLongTimesInHours) {
    ProgressBar bar(draw(), true, columns(), clock());
    mNow += 100s;
    bar.advance(100.0, 0.01);
    EXPECT_NE(mOut.str().find(" 1 x real time, 2:45:00 left"), std::string::npos) << mOut.str();
}

TEST_F(ProgressBarTest, RedrawsAtMostTenTimesASecond) {
    ProgressBar bar(draw(), true, columns(), clock());
    for (int i = 0; i < 1000; ++i) {
        mNow += 1ms;
        bar.advance(0.1, 0.001);
    }
    const std::string text = mOut.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\r'), 10);
}

TEST_F(ProgressBarTest, ClearsItsLineAtTheEnd) {
    {
        ProgressBar bar(draw(), true, columns(), clock());
        mNow += 1s;
        bar.advance(0.5, 0.5);
        mOut.str("");
    }
    EXPECT_EQ(mOut.str(), "\r\033[K");
}

TEST_F(ProgressBarTest, AShortRenderShowsNothing) {
    {
        ProgressBar bar(draw(), true, columns(), clock());
        mNow += 50ms;
        bar.advance(1.0, 1.0);
    }
    EXPECT_EQ(mOut.str(), "");
}

TEST_F(ProgressBarTest, DrawsNothingOnceFinished) {
    ProgressBar bar(draw(), true, columns(), clock());
    bar.finish();
    mNow += 1s;
    bar.advance(1.0, 1.0);
    EXPECT_EQ(mOut.str(), "");
}

TEST_F(ProgressBarTest, NeverGoesBeyondTheEnd) {
    ProgressBar bar(draw(), true, columns(), clock());
    mNow += 1s;
    bar.advance(5.0, 5.0);
    EXPECT_NE(mOut.str().find("[##############################] 100 %"), std::string::npos) << mOut.str();
    EXPECT_NE(mOut.str().find("0:00 left"), std::string::npos) << mOut.str();
}

TEST_F(ProgressBarTest, FitsTheTerminal) {
    const std::vector<std::pair<std::size_t, std::string>> widths = {
        {80, "[#######                       ] 25 %, 75 x real time, 0:06 left"},
        {45, "[##        ] 25 %, 75 x real time, 0:06 left"},
        {40, "[#    ] 25 %, 75 x real time, 0:06 left"},
        {39, "25 %, 75 x real time, 0:06 left"},
        {10, "25 %, 75 "},
        {1, ""},
    };
    for (const auto& [width, line] : widths) {
        mColumns = width;
        ProgressBar bar(draw(), true, columns(), clock());
        mNow += 2s;
        mOut.str("");
        bar.advance(150.0, 0.25);
        EXPECT_EQ(mOut.str(), "\r\033[K" + line);
    }
}

TEST_F(ProgressBarTest, FollowsTheTerminalsWidth) {
    ProgressBar bar(draw(), true, columns(), clock());
    for (const std::size_t width : {80U, 20U, 50U}) {
        mColumns = width;
        mNow += 1s;
        mOut.str("");
        bar.advance(1.0, 0.01);
        EXPECT_LT(mOut.str().size(), std::string(kClearLine).size() + width);
        EXPECT_EQ(mOut.str().find('[', std::string(kClearLine).size()) != std::string::npos, width >= 50);
    }
}

TEST_F(ProgressBarTest, PrintsAboveTheBar) {
    ProgressBar bar(draw(), true, columns(), clock());
    bar.printAbove([&] { mOut << "first\n"; });
    EXPECT_EQ(mOut.str(), "first\n") << "there was no line to clear";
    mNow += 1s;
    bar.advance(1.0, 0.5);
    mOut.str("");
    bar.printAbove([&] { mOut << "second\n"; });
    EXPECT_EQ(mOut.str(), "\r\033[Ksecond\n");
    mNow += 1s;
    mOut.str("");
    bar.advance(1.0, 0.25);
    EXPECT_NE(mOut.str().find(" 75 %"), std::string::npos) << mOut.str();
}

// The share in percent that the bar shows after the next step, which adds nothing.
std::string shownShare(ProgressBar& bar, std::ostringstream& out) {
    out.str("");
    bar.advance(0.0, 0.0);
    const std::string text = out.str();
    const std::size_t start = text.find("] ") + 2;
    return text.substr(start, text.find(',') - start);
}

TEST_F(ProgressBarTest, FilesHaveEqualShares) {
    ProgressBar bar(draw(), true, columns(), [this] { return mNow += 1s; });
    {
        FileProgress first(bar, 3);
        first.advance(1.0, 2.0);
        EXPECT_EQ(shownShare(bar, mOut), "16 %");
        first.advance(9.0, 2.0);
        EXPECT_EQ(shownShare(bar, mOut), "33 %") << "longer than it said";
    }
    EXPECT_EQ(shownShare(bar, mOut), "33 %");
    { const FileProgress failed(bar, 3); }
    EXPECT_EQ(shownShare(bar, mOut), "66 %");
    {
        FileProgress ofUnknownLength(bar, 3);
        ofUnknownLength.advance(100.0, 0.0);
        EXPECT_EQ(shownShare(bar, mOut), "66 %");
    }
    EXPECT_EQ(shownShare(bar, mOut), "100 %");
}

TEST_F(ProgressBarTest, SeveralThreadsMayAdvance) {
    mNow += 1s;
    ProgressBar bar(draw(), true, columns(),
                    [start = mNow, calls = 0]() mutable { return start + 1s * calls++; });
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 1000; ++i) {
                bar.advance(1.0, 1.0 / 4000.0);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_NE(mOut.str().find("100 %"), std::string::npos);
}

TEST(TerminalTest, AFileIsNone) {
    const int file = ::open("/dev/null", O_WRONLY);
    EXPECT_FALSE(isTerminal(file));
    ::close(file);
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(terminal, 0);
    EXPECT_TRUE(isTerminal(terminal));
    ::close(terminal);
}

} // namespace
} // namespace varno::test
