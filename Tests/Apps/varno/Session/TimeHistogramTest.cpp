#include "Session/TimeHistogram.h"

#include <gmock/gmock.h>

#include <random>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kMinuteNs = 60'000'000'000;

TimeHistogram::Row onlyRowOf(std::int64_t durationNs) {
    TimeHistogram times;
    times.add(durationNs);
    const auto rows = times.rows();
    EXPECT_EQ(rows.size(), 1U) << durationNs;
    return rows.front();
}

TEST(TimeHistogram, IsEmptyAtFirst) {
    const TimeHistogram times;
    EXPECT_EQ(times.count(), 0);
    EXPECT_EQ(times.worstNs(), 0);
    EXPECT_EQ(times.percentileNs(0.5), 0);
    EXPECT_THAT(times.rows(), IsEmpty());
}

TEST(TimeHistogram, KeepsDurationsToAThirtySecond) {
    std::mt19937_64 random(1);
    for (int bits = 1; bits <= 35; ++bits) {
        for (const std::int64_t duration : {(std::int64_t{1} << bits) - 1, std::int64_t{1} << bits,
                                            static_cast<std::int64_t>(random() % (1ULL << bits))}) {
            const std::int64_t most = onlyRowOf(duration).mostNs;
            EXPECT_GE(most, duration);
            EXPECT_LE(most - duration, duration / 32) << duration;
        }
    }
}

TEST(TimeHistogram, CountsEachDurationInOneRow) {
    TimeHistogram times;
    for (const std::int64_t duration : {5, 63, 64, 65, 66, 5}) {
        times.add(duration);
    }
    EXPECT_EQ(times.count(), 6);
    EXPECT_EQ(times.worstNs(), 66);
    using Row = TimeHistogram::Row;
    EXPECT_THAT(times.rows(), ElementsAre(Row{5, 2}, Row{63, 1}, Row{65, 2}, Row{67, 1}));
}

TEST(TimeHistogram, FindsPercentiles) {
    TimeHistogram times;
    for (std::int64_t duration = 1; duration <= 1000; ++duration) {
        times.add(duration);
    }
    EXPECT_EQ(times.percentileNs(0.001), 1);
    EXPECT_EQ(times.percentileNs(0.05), 50);
    EXPECT_GE(times.percentileNs(0.5), 500);
    EXPECT_LE(times.percentileNs(0.5), 500 * 33 / 32);
    EXPECT_GE(times.percentileNs(0.999), 999);
    EXPECT_EQ(times.percentileNs(1.0), 1000) << "not above the worst";
}

TEST(TimeHistogram, OneInAThousandIsAboveTheLastPercentile) {
    TimeHistogram times;
    for (int i = 0; i < 999; ++i) {
        times.add(10);
    }
    times.add(50);
    EXPECT_EQ(times.percentileNs(0.999), 10);
    times.add(50);
    EXPECT_EQ(times.percentileNs(0.999), 50);
}

TEST(TimeHistogram, TakesDurationsOutOfItsRange) {
    EXPECT_EQ(onlyRowOf(-1).mostNs, 0);
    TimeHistogram times;
    times.add(2 * kMinuteNs);
    times.add(60 * kMinuteNs);
    EXPECT_EQ(times.worstNs(), 60 * kMinuteNs);
    ASSERT_EQ(times.rows().size(), 1U);
    EXPECT_GT(times.rows().front().mostNs, kMinuteNs);
}

} // namespace
} // namespace varno::test
