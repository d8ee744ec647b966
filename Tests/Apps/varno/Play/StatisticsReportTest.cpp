#include "Play/StatisticsReport.h"

#include <gtest/gtest.h>

#include <sched.h>

namespace varno::test {
namespace {

constexpr std::int64_t kLengthNs = 666'667;

class StatisticsReport : public testing::Test {
protected:
    void play() {
        for (int i = 0; i < 79; ++i) {
            mBlocks.add({.lastsNs = kLengthNs, .wokenNs = 20'833}, {.elapsedNs = 3'000});
        }
        mBlocks.add({.lastsNs = kLengthNs, .wokenNs = 0}, {.elapsedNs = 700'000,
                                                           .workedNs = 700'000,
                                                           .pageFaults = 12,
                                                           .beganNs = 5'000'000'123,
                                                           .processor = 1});
        mBlocks.add({.lastsNs = kLengthNs, .wokenNs = 0},
                    {.elapsedNs = 701'000, .workedNs = 9'000, .beganNs = 6'000'000'000});
        mBlocks.add({.lastsNs = kLengthNs, .wokenNs = 0}, {.elapsedNs = 10'000});
        mBlocks.add({.lastsNs = kLengthNs, .wokenNs = 9, .lostBlocks = 5}, {.elapsedNs = 10'000});
        mBlocks.setSchedule({SCHED_FIFO | SCHED_RESET_ON_FORK, 5});
    }
    LiveStatistics statistics() const { return {mBlocks, 32, 48'000.0, 4}; }

    BlockStatistics mBlocks;
};

TEST_F(StatisticsReport, IsATable) {
    play();
    EXPECT_EQ(statisticsText(statistics()),
              "blocks        83, in the end of 32 frames at 48000 Hz: 666.7 microseconds\n"
              "late blocks   1 ours, 1 interrupted, 1 woken late; 5 lost\n"
              "overruns      4, as the sound system counts\n"
              "scheduling    SCHED_FIFO, priority 5\n"
              "\n"
              "microseconds   p50  p99.9  worst\n"
              "processing     3.0  701.0  701.0\n"
              "waking        20.8   20.8   20.8\n"
              "\n"
              "processing, in microseconds:\n"
              " up to  blocks\n"
              "   4.1      79  ########################################\n"
              "   8.2       0\n"
              "  16.4       2  ##\n"
              "  32.8       0\n"
              "  65.5       0\n"
              " 131.1       0\n"
              " 262.1       0\n"
              " 524.3       0\n"
              "1048.6       2  ##\n"
              "\n"
              "the longest of those that took longer than they last, in microseconds:\n"
              " took  computed  waits  page faults  cause\n"
              "701.0       9.0      0            0  interrupted\n"
              "700.0     700.0      0           12  ours\n");
}

TEST_F(StatisticsReport, OfNothing) {
    EXPECT_EQ(statisticsText(statistics()),
              "blocks        0, in the end of 32 frames at 48000 Hz: 666.7 microseconds\n"
              "late blocks   0 ours, 0 interrupted, 0 woken late; 0 lost\n"
              "overruns      4, as the sound system counts\n"
              "scheduling    not known: nothing was processed\n");
    EXPECT_EQ(
        jsonLine(statisticsJson(statistics())),
        R"({"blocks":0,"frames":32,"rate_hz":48000.0,"block_us":666.667,)"
        R"("late":{"ours":0,"interrupted":0,"woken_late":0},"long_blocks":[],"lost_blocks":0,"overruns":4,)"
        R"("schedule":null,"processing_us":null,"waking_us":null})"
        "\n");
}

TEST_F(StatisticsReport, IsJson) {
    play();
    EXPECT_EQ(jsonLine(statisticsJson(statistics())),
              R"({"blocks":83,"frames":32,"rate_hz":48000.0,"block_us":666.667,)"
              R"("late":{"ours":1,"interrupted":1,"woken_late":1},"long_blocks":[)"
              R"({"cause":"ours","began_ns":5000000123,"took_us":700.0,"computed_us":700.0,)"
              R"("waits":0,"page_faults":12,"processor":1},)"
              R"({"cause":"interrupted","began_ns":6000000000,"took_us":701.0,"computed_us":9.0,)"
              R"("waits":0,"page_faults":0,"processor":0}],"lost_blocks":5,"overruns":4,)"
              R"("schedule":{"policy":"SCHED_FIFO","priority":5},)"
              R"("processing_us":{"p50":3.007,"p99_9":701.0,"worst":701.0,)"
              R"("histogram":[{"up_to":3.007,"blocks":79},{"up_to":10.239,"blocks":2},)"
              R"({"up_to":704.511,"blocks":2}]},)"
              R"("waking_us":{"p50":20.833,"p99_9":20.833,"worst":20.833,)"
              R"("histogram":[{"up_to":0.0,"blocks":3},{"up_to":0.009,"blocks":1},)"
              R"({"up_to":20.991,"blocks":79}]}})"
              "\n");
}

TEST_F(StatisticsReport, NamesAnOrdinaryThread) {
    play();
    mBlocks.setSchedule({SCHED_OTHER, 0});
    EXPECT_NE(statisticsText(statistics()).find("scheduling    SCHED_OTHER, not a real-time thread\n"),
              std::string::npos);
}

} // namespace
} // namespace varno::test
