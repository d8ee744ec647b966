#include "Host/HostController.h"
#include "ACF/ACFPtr.h"
#include "Host/HostObject.h"
#include "Host/InstanceHost.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Host/TestContext.h"

#include <cmath>
#include <gtest/gtest.h>

namespace varno {
namespace {

class HostControllerTest : public FixtureTest {
protected:
    void start(const InstanceSetup& setup = {}) {
        instance = makeInstance(setup);
        controller = ACFPtr<AAX_IACFController_V3>::Query(&instance->host(), IID_IAAXControllerV3);
        ASSERT_TRUE(controller);
    }

    void TearDown() override {
        controller.Reset();
        instance.reset();
        FixtureTest::TearDown();
    }

    void process(float sample, std::int32_t frames) {
        const std::vector<float> in(static_cast<std::size_t>(frames), sample);
        std::vector<float> out(in.size());
        const float* inputs[] = {in.data(), in.data()};
        float* outputs[] = {out.data(), out.data()};
        instance->process(inputs, outputs, frames);
    }

    std::unique_ptr<Instance> instance;
    ACFPtr<AAX_IACFController_V3> controller;
};

TEST_F(HostControllerTest, ReportsOnTheInstance) {
    start({.channels = 1, .sampleRateHz = 96000.0, .offline = true});
    HostString text;
    float rate = 0.0F;
    AAX_EStemFormat in{};
    AAX_EStemFormat out{};
    std::int32_t platform = 0;
    std::uint8_t offline = 0;
    std::uint32_t meters = 0;
    std::int32_t hybrid = -1;
    EXPECT_EQ(AAX_SUCCESS, controller->GetEffectID(&text));
    EXPECT_EQ(fixture::kEffectID, text.text());
    EXPECT_EQ(AAX_SUCCESS, controller->GetSampleRate(&rate));
    EXPECT_EQ(96000.0F, rate);
    EXPECT_EQ(AAX_SUCCESS, controller->GetInputStemFormat(&in));
    EXPECT_EQ(AAX_SUCCESS, controller->GetOutputStemFormat(&out));
    EXPECT_EQ(AAX_eStemFormat_Mono, in);
    EXPECT_EQ(AAX_eStemFormat_Mono, out);
    EXPECT_EQ(AAX_SUCCESS, controller->GetPlugInTargetPlatform(&platform));
    EXPECT_EQ(AAX_eTargetPlatform_Native, platform);
    EXPECT_EQ(AAX_SUCCESS, controller->GetIsAudioSuite(&offline));
    EXPECT_EQ(1, offline);
    EXPECT_EQ(AAX_SUCCESS, controller->GetMeterCount(&meters));
    EXPECT_EQ(2U, meters);
    EXPECT_EQ(AAX_SUCCESS, controller->GetHybridSignalLatency(&hybrid));
    EXPECT_EQ(0, hybrid);
    EXPECT_EQ(AAX_SUCCESS, controller->GetHostName(&text));
    EXPECT_EQ("Varno Host 1.0", text.text());
}

TEST_F(HostControllerTest, ThePositionMovesWithTheRender) {
    start();
    process(0.0F, 100);
    process(0.0F, 20);
    AAX_CTimeOfDay now = 0;
    AAX_CTimeOfDay automation = 0;
    EXPECT_EQ(AAX_SUCCESS, controller->GetTODLocation(&now));
    EXPECT_EQ(AAX_SUCCESS, controller->GetCurrentAutomationTimestamp(&automation));
    EXPECT_EQ(120, now);
    EXPECT_EQ(120, automation);
}

TEST_F(HostControllerTest, KeepsTheLatency) {
    start();
    std::int32_t frames = -1;
    EXPECT_EQ(AAX_SUCCESS, controller->SetSignalLatency(5));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, controller->SetSignalLatency(-1));
    EXPECT_EQ(AAX_SUCCESS, controller->GetSignalLatency(&frames));
    EXPECT_EQ(5, frames);
}

TEST_F(HostControllerTest, ReadsAndClearsMeters) {
    start();
    process(2.0F, 16);
    const AAX_CTypeID meter = fixture::kMeterIDs[0];
    float value = 0.0F;
    std::uint8_t clipped = 0;
    EXPECT_EQ(AAX_SUCCESS, controller->GetCurrentMeterValue(meter, &value));
    EXPECT_EQ(2.0F, value);
    EXPECT_EQ(AAX_SUCCESS, controller->GetMeterPeakValue(meter, &value));
    EXPECT_EQ(2.0F, value);
    EXPECT_EQ(AAX_SUCCESS, controller->GetMeterClipped(meter, &clipped));
    EXPECT_EQ(1, clipped);
    EXPECT_EQ(AAX_SUCCESS, controller->ClearMeterPeakValue(meter));
    EXPECT_EQ(AAX_SUCCESS, controller->ClearMeterClipped(meter));
    EXPECT_EQ(AAX_SUCCESS, controller->GetMeterPeakValue(meter, &value));
    EXPECT_EQ(0.0F, value);
    EXPECT_EQ(AAX_SUCCESS, controller->GetMeterClipped(meter, &clipped));
    EXPECT_EQ(0, clipped);
}

TEST_F(HostControllerTest, RefusesUnknownMeters) {
    start();
    float value = 7.0F;
    std::uint8_t clipped = 7;
    EXPECT_EQ(AAX_ERROR_INVALID_METER_INDEX, controller->GetCurrentMeterValue(1, &value));
    EXPECT_EQ(AAX_ERROR_INVALID_METER_INDEX, controller->GetMeterPeakValue(1, &value));
    EXPECT_EQ(AAX_ERROR_INVALID_METER_INDEX, controller->ClearMeterPeakValue(1));
    EXPECT_EQ(AAX_ERROR_INVALID_METER_INDEX, controller->GetMeterClipped(1, &clipped));
    EXPECT_EQ(AAX_ERROR_INVALID_METER_INDEX, controller->ClearMeterClipped(1));
    EXPECT_EQ(7.0F, value);
    EXPECT_EQ(7, clipped);
}

TEST_F(HostControllerTest, RefusesNullOutputs) {
    start();
    const AAX_CTypeID meter = fixture::kMeterIDs[0];
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetEffectID(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetSampleRate(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetInputStemFormat(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetTODLocation(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetCurrentMeterValue(meter, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetMeterCount(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->GetHostName(nullptr));
}

TEST_F(HostControllerTest, HasNeitherDSPHardwareNorMIDI) {
    start();
    std::int32_t cycles = 1;
    AAX_EProperty property = AAX_eProperty_Host62;
    AAX_CMidiPacket packet{};
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, controller->GetCycleCount(property, &cycles));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, controller->SetCycleCount(&property, &cycles, 1));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, controller->GetNextMIDIPacket(&cycles, &packet));
}

TEST_F(HostControllerTest, APacketPostedAloneArrivesWithTheNextBuffer) {
    start();
    const float gain = 1.0F;
    EXPECT_EQ(AAX_SUCCESS, controller->PostPacket(fixture::kGain, &gain, sizeof gain));
    process(1.0F, 8);
    EXPECT_EQ(1.0F, instance->meters().value(1));
}

TEST_F(HostControllerTest, EveryInterfaceOfAnInstanceCanBeWithheld) {
    const acfIID all[] = {IID_IAAXControllerV1,        IID_IAAXControllerV2,
                          IID_IAAXControllerV3,        IID_IAAXTransportV1,
                          IID_IAAXTransportV2,         IID_IAAXTransportV3,
                          IID_IAAXPageTableController, IID_IAAXPageTableControllerV2,
                          IID_IACFComponentFactory,    IID_IAAXEffectParametersV1};
    start();
    auto& offered = instance->host();
    for (const acfIID& iid : all) {
        EXPECT_TRUE(ACFPtr<IACFUnknown>::Query(&offered, iid));
        auto& withheld = module()->context()->options.withheld;
        withheld = {iid};
        EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(&offered, iid));
        withheld.clear();
    }
    EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(&offered, IID_IAAXCollectionV1));
}

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

TEST_F(HostTransportTest, ReportsTheTimeLine) {
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
    // More than a day, still exact to the tick.
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
