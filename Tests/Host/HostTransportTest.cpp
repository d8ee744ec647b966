#include "Host/HostTransport.h"

#include "Host/InstanceHost.h"
#include "Tests/Host/TestContext.h"

#include "ACF/ACFPtr.h"
#include <gtest/gtest.h>

namespace varno {
namespace {

class HostTransportTest : public testing::Test {
protected:
    static constexpr std::int64_t kBeatFrames = 24000; // half a second at 120 beats a minute and 48 kHz

    ACFPtr<InstanceHost> host = ACFPtr<InstanceHost>::Adopt(
        new InstanceHost(testContext(), EffectDescription(), VariantDescription(), InstanceSetup()));
    ACFPtr<AAX_IACFTransport_V3> transport =
        ACFPtr<AAX_IACFTransport_V3>::Query(host.Get(), IID_IAAXTransportV3);

    std::int64_t ticksAt(std::int64_t frames) {
        std::int64_t ticks = -1;
        EXPECT_EQ(AAX_SUCCESS, transport->GetCustomTickPosition(&ticks, frames));
        return ticks;
    }
};

TEST_F(HostTransportTest, TellsTheTimeLine) {
    double tempo = 0.0;
    std::int32_t numerator = 0;
    std::int32_t denominator = 0;
    bool isPlaying = false;
    std::uint32_t ticks = 0;
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentTempo(&tempo));
    EXPECT_EQ(120.0, tempo);
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentMeter(&numerator, &denominator));
    EXPECT_EQ(4, numerator);
    EXPECT_EQ(4, denominator);
    EXPECT_EQ(AAX_SUCCESS, transport->IsTransportPlaying(&isPlaying));
    EXPECT_TRUE(isPlaying);
    EXPECT_EQ(AAX_SUCCESS, transport->GetTicksPerQuarter(&ticks));
    EXPECT_EQ(960000U, ticks);
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentTicksPerBeat(&ticks));
    EXPECT_EQ(960000U, ticks);
}

TEST_F(HostTransportTest, StandsWhereTheRenderStands) {
    std::int64_t frames = -1;
    std::int64_t ticks = -1;
    host->state().positionFrames = 3 * kBeatFrames;
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentNativeSampleLocation(&frames));
    EXPECT_EQ(3 * kBeatFrames, frames);
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentTickPosition(&ticks));
    EXPECT_EQ(3 * 960000, ticks);
}

TEST_F(HostTransportTest, TurnsFramesIntoTicks) {
    EXPECT_EQ(0, ticksAt(0));
    EXPECT_EQ(40, ticksAt(1));
    EXPECT_EQ(-40, ticksAt(-1));
    EXPECT_EQ(960000, ticksAt(kBeatFrames));
    // A day and more, still to the tick.
    EXPECT_EQ(40LL * 10000000000LL, ticksAt(10000000000LL));
}

TEST_F(HostTransportTest, CountsBarsAndBeatsFromOne) {
    struct Case {
        std::int64_t frames;
        std::int32_t bar;
        std::int32_t beat;
        std::int64_t ticks;
    };
    const Case cases[] = {{0, 1, 1, 0},
                          {kBeatFrames - 1, 1, 1, 959960},
                          {kBeatFrames, 1, 2, 0},
                          {4 * kBeatFrames, 2, 1, 0},
                          {7 * kBeatFrames + 1, 2, 4, 40},
                          {-1, 0, 4, 959960},
                          {-4 * kBeatFrames, 0, 1, 0}};
    for (const Case& expected : cases) {
        std::int32_t bar = -9;
        std::int32_t beat = -9;
        std::int64_t ticks = -9;
        EXPECT_EQ(AAX_SUCCESS, transport->GetBarBeatPosition(&bar, &beat, &ticks, expected.frames));
        EXPECT_EQ(expected.bar, bar) << expected.frames;
        EXPECT_EQ(expected.beat, beat) << expected.frames;
        EXPECT_EQ(expected.ticks, ticks) << expected.frames;
    }
}

TEST_F(HostTransportTest, HasNoLoopSelectionTimeCodeOrMetronome) {
    bool isLooping = true;
    std::int64_t start = -1;
    std::int64_t end = -1;
    std::int32_t offset = -1;
    std::int32_t isEnabled = -1;
    AAX_EFrameRate rate{};
    AAX_EFeetFramesRate feetRate{};
    EXPECT_EQ(AAX_SUCCESS, transport->GetCurrentLoopPosition(&isLooping, &start, &end));
    EXPECT_FALSE(isLooping);
    EXPECT_EQ(0, start);
    EXPECT_EQ(0, end);
    EXPECT_EQ(AAX_SUCCESS, transport->GetTimelineSelectionStartPosition(&start));
    EXPECT_EQ(0, start);
    EXPECT_EQ(AAX_SUCCESS, transport->GetTimeCodeInfo(&rate, &offset));
    EXPECT_EQ(AAX_eFrameRate_Undeclared, rate);
    EXPECT_EQ(AAX_SUCCESS, transport->GetFeetFramesInfo(&feetRate, &start));
    EXPECT_EQ(AAX_SUCCESS, transport->GetHDTimeCodeInfo(&rate, &start));
    EXPECT_EQ(AAX_SUCCESS, transport->IsMetronomeEnabled(&isEnabled));
    EXPECT_EQ(0, isEnabled);
}

TEST_F(HostTransportTest, RefusesNullOutputsAndWritesNoOther) {
    std::int32_t number = -9;
    std::int64_t ticks = -9;
    bool flag = true;
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetCurrentTempo(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetCurrentMeter(&number, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetCurrentMeter(nullptr, &number));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetCurrentLoopPosition(nullptr, &ticks, &ticks));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetCurrentLoopPosition(&flag, &ticks, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetBarBeatPosition(&number, &number, nullptr, 0));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, transport->GetBarBeatPosition(&number, nullptr, &ticks, 0));
    EXPECT_EQ(-9, number);
    EXPECT_EQ(-9, ticks);
    EXPECT_TRUE(flag);
}

} // namespace
} // namespace varno
