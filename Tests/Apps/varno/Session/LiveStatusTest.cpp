#include "Session/LiveStatus.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/SingleStep.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(LiveWatch, ReportsOverrunsOnce) {
    LiveStatus status(48'000.0, 256);
    LiveWatch watch(status, "Fake");
    EXPECT_EQ(watch.newOverruns(), std::nullopt);
    status.countOverrun();
    EXPECT_EQ(watch.newOverruns(), "1 overrun so far: the sound was interrupted");
    EXPECT_EQ(watch.newOverruns(), std::nullopt);
    status.countOverrun();
    status.countOverrun();
    EXPECT_EQ(watch.newOverruns(), "3 overruns so far: the sound was interrupted");
    EXPECT_EQ(watch.overruns(), 3);
}

#if VARNO_HAS_SINGLE_STEP
TEST(LiveStatus, CountsOverrunsOfSeveralThreadsInOneOperation) {
    LiveStatus status(48'000.0, 256);
    const auto count = [&status] { status.countOverrun(); };
    int before = 0;
    const int instructions = callAtEachInstruction(
        count, count, [&] { before = status.overruns(); }, [&] { EXPECT_EQ(status.overruns(), before + 2); });
    EXPECT_GT(instructions, 1);
}
#endif

// Lines of a terminal stay.
TEST(LiveWatch, CountsOverrunsInTwoLines) {
    LiveStatus status(48'000.0, 256);
    LiveWatch watch(status, "Fake");
    EXPECT_EQ(watch.firstOverruns(), std::nullopt);
    EXPECT_EQ(watch.laterOverruns(), std::nullopt);
    status.countOverrun();
    EXPECT_EQ(watch.firstOverruns(), "1 overrun so far: the sound was interrupted");
    EXPECT_EQ(watch.laterOverruns(), std::nullopt);
    status.countOverrun();
    EXPECT_EQ(watch.firstOverruns(), std::nullopt);
    EXPECT_EQ(watch.laterOverruns(), "2 overruns in all");
    EXPECT_EQ(watch.newOverruns(), "2 overruns so far: the sound was interrupted");
}

TEST(LiveWatch, FollowsTheRate) {
    LiveStatus status(48'000.0, 256);
    LiveWatch watch(status, "Fake");
    EXPECT_FALSE(watch.hasNewRate());
    status.setRate(96'000.0);
    EXPECT_TRUE(watch.hasNewRate());
    EXPECT_EQ(watch.rateHz(), 48'000.0);
    EXPECT_EQ(watch.followRate(), 96'000.0);
    EXPECT_EQ(watch.rateHz(), 96'000.0);
    EXPECT_FALSE(watch.hasNewRate());
}

TEST(LiveWatch, TheEndIsAnError) {
    LiveStatus status(48'000.0, 256);
    const LiveWatch watch(status, "Fake client varno");
    watch.requireRunning();
    status.end("it fell over");
    status.end("and broke");
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { watch.requireRunning(); }),
              "Fake client varno: the sound system has ended (it fell over)");
}

TEST(LiveWatch, TheReasonMayBeMissingOrLong) {
    LiveStatus silent(48'000.0, 256);
    silent.end("");
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { LiveWatch(silent, "Fake").requireRunning(); }),
              "Fake: the sound system has ended");
    LiveStatus talkative(48'000.0, 256);
    talkative.end(std::string(1000, 'x'));
    EXPECT_EQ(talkative.ending(), std::string(LiveStatus::kMostReason, 'x'));
}

} // namespace
} // namespace varno::test
