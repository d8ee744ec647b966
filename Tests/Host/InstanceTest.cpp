#include "Host/Instance.h"

#include "Host/InstanceHost.h"
#include "Host/PageTable.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureParameters.h"
#include "Tests/Host/FixtureTest.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>

namespace varno {
namespace {

using fixture::Fault;
using fixture::FaultScope;
using testing::HasSubstr;

class InstanceTest : public FixtureTest {
protected:
    // Processes one stereo buffer of ones and returns the left output.
    static std::vector<float> processOnes(Instance& instance, std::int32_t frames) {
        const std::vector<float> ones(static_cast<std::size_t>(frames), 1.0F);
        std::vector<float> left(ones.size(), -9.0F);
        std::vector<float> right(ones.size(), -9.0F);
        const float* inputs[] = {ones.data(), ones.data()};
        float* outputs[] = {left.data(), right.data()};
        instance.process(inputs, outputs, frames);
        EXPECT_EQ(left, right);
        return left;
    }

    static fixture::State stateOf(const Instance& instance) {
        fixture::State state{};
        const auto bytes = instance.privateData(fixture::kState);
        EXPECT_EQ(sizeof state, bytes.size());
        std::memcpy(&state, bytes.data(), sizeof state);
        return state;
    }
};

TEST_F(InstanceTest, ChoosesTheVariantByChannels) {
    const auto mono = makeInstance({.channels = 1});
    const auto stereo = makeInstance({.channels = 2});
    EXPECT_TRUE(mono->variant().hasPlugInID(fixture::kMonoID));
    EXPECT_TRUE(stereo->variant().hasPlugInID(fixture::kStereoID));
}

TEST_F(InstanceTest, RefusesWhatTheModuleDoesNotHave) {
    options.sampleRates = {16000.0, 384000.0};
    EXPECT_EQ("effect \"org.example.fixture.gain\" has no native routine for 6 channels",
              hostErrorOf([&] { makeInstance({.channels = 6}); }));
    EXPECT_EQ("the module has no effect \"nobody\"",
              hostErrorOf([&] { makeInstance({.effectID = "nobody"}); }));
    EXPECT_EQ("sample rate 8000 Hz is not supported: expected 16000 to 384000 Hz",
              hostErrorOf([&] { makeInstance({.sampleRateHz = 8000.0}); }));
    EXPECT_EQ("found a largest buffer of 0 frames, expected at least 1",
              hostErrorOf([&] { makeInstance({.maximumFrames = 0}); }));
}

TEST_F(InstanceTest, FailsWithoutADataModelAndLeavesNothingBehind) {
    {
        const FaultScope fault(Fault::kMakesNoDataModel);
        EXPECT_EQ("effect \"org.example.fixture.gain\" makes no data model",
                  hostErrorOf([&] { makeInstance(); }));
    }
    {
        const FaultScope fault(Fault::kDataModelHasNoInterface);
        EXPECT_EQ("the data model does not answer to its interface", hostErrorOf([&] { makeInstance(); }));
    }
    {
        const FaultScope fault(Fault::kInitializationFails);
        EXPECT_EQ("the data model cannot be initialised: result -20011",
                  hostErrorOf([&] { makeInstance(); }));
    }
    EXPECT_EQ(0, module()->liveObjects());
}

TEST_F(InstanceTest, ReadsItsParameters) {
    const auto instance = makeInstance();
    ASSERT_EQ(2U, instance->parameters().size());
    const ParameterInfo& gain = instance->parameters()[1];
    EXPECT_EQ(1, gain.index);
    EXPECT_EQ("Gain", gain.id);
    EXPECT_EQ("Input Gain", gain.name);
    EXPECT_EQ(AAX_eParameterType_Continuous, gain.type);
    EXPECT_EQ(101, gain.steps);
    EXPECT_EQ(0.5, gain.defaultNormalized);
    EXPECT_EQ("0.50", gain.defaultText);
    EXPECT_TRUE(gain.isAutomatable);
    EXPECT_FALSE(gain.isMasterBypass);
    EXPECT_TRUE(instance->parameters()[0].isMasterBypass);
    EXPECT_EQ(&gain, instance->parameter("Gain"));
    EXPECT_EQ(nullptr, instance->parameter("gain"));
}

TEST_F(InstanceTest, ProcessesTheFirstBufferWithTheDefaults) {
    const auto instance = makeInstance();
    EXPECT_EQ(std::vector<float>(16, 0.5F), processOnes(*instance, 16));
    const fixture::Sight& sight = fixture::lastSight();
    EXPECT_EQ(16, sight.frames);
    EXPECT_EQ(48000.0F, sight.sampleRateHz);
    EXPECT_EQ(0, sight.clock);
    EXPECT_EQ(-1, sight.sideChain);
    EXPECT_TRUE(sight.reservedIsNull);
    EXPECT_TRUE(sight.stateIsAligned);
    EXPECT_EQ(fixture::kStart, stateOf(*instance).start);
}

TEST_F(InstanceTest, ASetValueIsInForceFromTheNextBufferOn) {
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 0.25);
    EXPECT_EQ(0.25, instance->normalized("Gain"));
    EXPECT_EQ("0.25", instance->text("Gain"));
    EXPECT_EQ(std::vector<float>(4, 0.25F), processOnes(*instance, 4));
    instance->setNormalized("Bypass", 1.0);
    EXPECT_EQ(std::vector<float>(4, 1.0F), processOnes(*instance, 4));
    EXPECT_EQ(0.25, instance->host().automation().currentValue("Gain"));
    EXPECT_EQ(std::nullopt, instance->host().automation().currentValue("Nobody"));
}

TEST_F(InstanceTest, ARequestWaitsForIdle) {
    const auto instance = makeInstance();
    instance->requestNormalized("Gain", 0.75);
    EXPECT_EQ(0.5, instance->normalized("Gain"));
    EXPECT_EQ(std::vector<float>(4, 0.5F), processOnes(*instance, 4));
    instance->idle();
    EXPECT_EQ(0.75, instance->normalized("Gain"));
    EXPECT_EQ(std::vector<float>(4, 0.75F), processOnes(*instance, 4));
}

TEST_F(InstanceTest, TheLastOfSeveralRequestsWins) {
    const auto instance = makeInstance();
    instance->requestNormalized("Gain", 0.125);
    instance->requestNormalized("Bypass", 1.0);
    instance->requestNormalized("Gain", 0.625);
    instance->idle();
    EXPECT_EQ(0.625, instance->normalized("Gain"));
    EXPECT_EQ(1.0, instance->normalized("Bypass"));
}

TEST_F(InstanceTest, RefusesUnknownParametersAndValuesThatAreNone) {
    const auto instance = makeInstance();
    const std::string unknown =
        "found parameter \"Nobody\", which effect \"org.example.fixture.gain\" does not have";
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->normalized("Nobody"); }));
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->text("Nobody"); }));
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->textOf("Nobody", 0.0); }));
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->fromText("Nobody", "0"); }));
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->setNormalized("Nobody", 0.0); }));
    EXPECT_EQ(unknown, hostErrorOf([&] { instance->requestNormalized("Nobody", 0.0); }));
    EXPECT_THAT(hostErrorOf([&] { instance->setNormalized("Gain", 1.5); }),
                HasSubstr("for parameter \"Gain\", expected 0 to 1"));
    EXPECT_THAT(hostErrorOf([&] { instance->setNormalized("Gain", std::nan("")); }),
                HasSubstr("expected 0 to 1"));
    EXPECT_EQ(0.5, instance->normalized("Gain"));
}

TEST_F(InstanceTest, TurnsTextIntoValuesAndBack) {
    const auto instance = makeInstance();
    EXPECT_EQ(0.3, instance->fromText("Gain", "0.3"));
    EXPECT_EQ(std::nullopt, instance->fromText("Gain", "loud"));
    EXPECT_EQ("on", instance->textOf("Bypass", 1.0));
}

TEST_F(InstanceTest, SplitsBuffersAboveTheLargest) {
    const auto instance = makeInstance({.maximumFrames = 64});
    const std::int32_t before = fixture::lastSight().calls;
    std::vector<float> ramp(150);
    for (std::size_t i = 0; i < ramp.size(); ++i) {
        ramp[i] = static_cast<float>(i);
    }
    std::vector<float> out(150, -9.0F);
    const float* inputs[] = {ramp.data(), ramp.data()};
    float* outputs[] = {out.data(), out.data()};
    instance->process(inputs, outputs, 150);
    for (std::size_t i = 0; i < out.size(); ++i) {
        ASSERT_EQ(0.5F * ramp[i], out[i]) << i;
    }
    EXPECT_EQ(3, fixture::lastSight().calls - before);
    EXPECT_EQ(22, fixture::lastSight().frames);
    EXPECT_EQ(128, fixture::lastSight().clock);
    EXPECT_EQ(150, instance->position());
    EXPECT_EQ(150, stateOf(*instance).frames);
}

TEST_F(InstanceTest, ABufferOfNoFramesReachesTheRoutineAndChangesNothing) {
    const auto instance = makeInstance();
    const std::int32_t before = fixture::lastSight().calls;
    processOnes(*instance, 0);
    EXPECT_EQ(1, fixture::lastSight().calls - before);
    EXPECT_EQ(0, instance->position());
}

TEST_F(InstanceTest, ProcessesInPlace) {
    const auto instance = makeInstance();
    std::vector<float> left(8, 1.0F);
    std::vector<float> right(8, 2.0F);
    const float* inputs[] = {left.data(), right.data()};
    float* outputs[] = {left.data(), right.data()};
    instance->process(inputs, outputs, 8);
    EXPECT_EQ(std::vector<float>(8, 0.5F), left);
    EXPECT_EQ(std::vector<float>(8, 1.0F), right);
}

TEST_F(InstanceTest, ResetPutsTheAlgorithmBackAndKeepsParameters) {
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 1.0);
    processOnes(*instance, 32);
    EXPECT_EQ(1.0F, instance->meters().value(0));
    instance->reset();
    EXPECT_EQ(0, instance->position());
    EXPECT_EQ(0, stateOf(*instance).frames);
    EXPECT_EQ(fixture::kStart, stateOf(*instance).start);
    EXPECT_EQ(0.0F, instance->meters().value(0));
    EXPECT_EQ(0.0F, instance->meters().peak(0));
    EXPECT_EQ(1.0, instance->normalized("Gain"));
}

TEST_F(InstanceTest, HasPrivateDataOnlyWhereItWasDeclared) {
    const auto instance = makeInstance();
    EXPECT_TRUE(instance->privateData(fixture::kGain).empty());
    EXPECT_TRUE(instance->privateData(99).empty());
}

TEST_F(InstanceTest, RestoresWhatItHasSaved) {
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 0.375);
    const StoredChunk saved = instance->save();
    EXPECT_EQ(fixture::kManufacturerID, saved.identity().manufacturerID);
    EXPECT_EQ(fixture::kProductID, saved.identity().productID);
    EXPECT_EQ(fixture::kStereoID, saved.identity().plugInID);
    EXPECT_EQ(fixture::kChunkID, saved.identity().chunkID);
    EXPECT_EQ(fixture::kChunkDataSize, saved.data().size());
    EXPECT_TRUE(instance->equals(saved));
    instance->setNormalized("Gain", 0.5);
    EXPECT_FALSE(instance->equals(saved));
    instance->restore(saved);
    EXPECT_EQ(0.375, instance->normalized("Gain"));
    EXPECT_EQ(saved.toBytes(), instance->save().toBytes());
}

TEST_F(InstanceTest, AMonoSettingLoadsIntoAStereoInstance) {
    const auto mono = makeInstance({.channels = 1});
    mono->setNormalized("Gain", 0.875);
    const auto stereo = makeInstance();
    stereo->restore(mono->save());
    EXPECT_EQ(0.875, stereo->normalized("Gain"));
}

TEST_F(InstanceTest, AValueThatDoesNotArriveLeavesEverythingAsItWas) {
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 1.0);
    const StoredChunk chunk = instance->save();
    instance->setNormalized("Gain", 0.25);
    {
        const FaultScope fault(Fault::kRefusesRestoredValue);
        EXPECT_EQ("saved state: not every value arrived, expected a valid value for each parameter",
                  hostErrorOf([&] { instance->restore(chunk); }));
    }
    EXPECT_EQ(0.25, instance->normalized("Gain"));
}

TEST_F(InstanceTest, RefusesSomebodyElsesState) {
    const auto instance = makeInstance();
    const StoredChunk foreign(
        12, {AAX_FourCC("Else"), fixture::kProductID, fixture::kStereoID, fixture::kChunkID});
    EXPECT_EQ("saved state: found manufacturer Else, expected Fixt",
              hostErrorOf([&] { instance->restore(foreign); }));
    EXPECT_EQ(0.5, instance->normalized("Gain"));
}

TEST_F(InstanceTest, TheLatencyIsWhatTheModuleAskedFor) {
    const auto instance = makeInstance();
    EXPECT_EQ(0, instance->latencyFrames());
    const auto controller = ACFPtr<AAX_IACFController>::Query(&instance->host(), IID_IAAXControllerV1);
    EXPECT_EQ(AAX_SUCCESS, controller->SetSignalLatency(33));
    EXPECT_EQ(33, instance->latencyFrames());
}

TEST_F(InstanceTest, CallsTheDataModelsTimer) {
    const auto instance = makeInstance();
    const int before = fixture::FixtureParameters::timerCalls();
    instance->timer();
    EXPECT_EQ(before + 1, fixture::FixtureParameters::timerCalls());
}

TEST_F(InstanceTest, WorksForAModuleThatFindsNoAutomation) {
    options.withheld = {IID_IAAXAutomationDelegateV1};
    const auto instance = makeInstance();
    instance->requestNormalized("Gain", 0.875);
    EXPECT_EQ(0.875, instance->normalized("Gain"));
    EXPECT_TRUE(instance->host().automation().registered().empty());
}

TEST_F(InstanceTest, PageTablesComeFromTheResourceAndThenTheDataModel) {
    const TemporaryFolder folder;
    folder.write("Fixture.xml", R"(<pageTables><effect manufacturer="Fixt" product="Gain" plugIns="FxGs">
        <table type="CtSf" pageSize="8"><page><control slot="2" parameter="Gain"/></page></table>
        </effect></pageTables>)");
    options.resources = folder.path();
    const auto instance = makeInstance();
    const auto table = instance->pageTable(AAX_FourCC("CtSf"), 8);
    ASSERT_TRUE(table);
    ASSERT_EQ(1U, table->content().pages.size());
    EXPECT_EQ((PageSlots{{2, "Gain"}, {7, "Bypass"}}), table->content().pages[0]);
    EXPECT_FALSE(instance->pageTable(AAX_FourCC("CtSf"), 16));
}

} // namespace
} // namespace varno
