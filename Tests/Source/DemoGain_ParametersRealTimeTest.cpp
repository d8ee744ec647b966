// What the data model does with a parameter, from the request for a value to the packet, calls no allocator,
// file or wait. Of all locks it takes only the packets' own, which no other thread holds. So it can be used
// on a thread that must not wait, as long as no other thread uses it.
#include "ACF/ACFPtr.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_Parameters.h"
#include "Tests/Source/DataModelFixture.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");

// What an action calls that an audio thread must not.
template<class Action>
RealTimeReport reportOf(Action&& action) {
    RealTimeScope scope;
    action();
    return scope.finish();
}

// Gives a parameter a value as an editor and its host do together.
void change(AAX_CEffectParameters& model, AAX_CParamID id, const double& answer, double value) {
    EXPECT_EQ(model.SetParameterNormalizedValue(id, value), AAX_SUCCESS);
    EXPECT_EQ(model.UpdateParameterNormalizedValue(id, answer, AAX_eUpdateSource_Unspecified), AAX_SUCCESS);
    EXPECT_EQ(model.GenerateCoefficients(), AAX_SUCCESS);
}

class ParametersRealTime : public testing::Test {
protected:
    ParametersRealTime() { mModel->Initialize(&mHost); }
    ~ParametersRealTime() override { mModel->Uninitialize(); }

    QuietHost mHost;
    ACFPtr<AAX_CEffectParameters> mModel =
        ACFPtr<AAX_CEffectParameters>::Retain(DemoGain_Parameters::Create());
};

TEST_F(ParametersRealTime, holdsForTheFirstPackets) {
    const RealTimeReport report = reportOf([&] { EXPECT_EQ(mModel->GenerateCoefficients(), AAX_SUCCESS); });
    EXPECT_EQ(report.allocations + report.files + report.waits, 0) << textOf(report);
    EXPECT_EQ(report.locks, 0) << "the lock of the packets is free: it is taken without a call of the system";
}

TEST_F(ParametersRealTime, holdsFromTheRequestToThePacket) {
    mModel->GenerateCoefficients();
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        const RealTimeReport report =
            reportOf([&] { change(*mModel, row.mIdentifier, mHost.automation.requested, 1.0); });
        EXPECT_EQ(report.allocations + report.files + report.waits, 0) << row.mIdentifier << textOf(report);
        EXPECT_EQ(report.locks, 0) << row.mIdentifier << ": marked dirty, then posted, under the free lock";
        EXPECT_EQ(mHost.automation.requested, 1.0) << row.mIdentifier;
        EXPECT_EQ(mHost.controller.lastField, row.mField) << row.mIdentifier;
    }
}

TEST_F(ParametersRealTime, holdsForEveryLookup) {
    AAX_CEffectParameters& model = *mModel;
    for (const AAX_CParamID id : {kDemoGain_Parameters[0].mIdentifier, "Gain", "Unknown", ""}) {
        const RealTimeReport report = reportOf([&] {
            AAX_IParameter* parameter = nullptr;
            AAX_EParameterType type{};
            std::uint8_t isAutomatable = 0;
            std::int32_t number = 0;
            double value = 0.0;
            model.GetParameter(id, &parameter);
            model.GetParameterIndex(id, &number);
            model.GetParameterIsAutomatable(id, &isAutomatable);
            model.GetParameterNumberOfSteps(id, &number);
            model.GetParameterOrientation(id, &number);
            model.GetParameterType(id, &type);
            model.GetParameterNormalizedValue(id, &value);
            model.GetParameterDefaultNormalizedValue(id, &value);
            model.SetParameterDefaultNormalizedValue(id, value);
            model.SetParameterNormalizedRelative(id, 0.25);
            model.UpdateParameterNormalizedRelative(id, 0.25);
            model.TouchParameter(id);
            model.ReleaseParameter(id);
        });
        EXPECT_EQ(report.allocations + report.files + report.waits, 0) << id << textOf(report);
    }
}

TEST_F(ParametersRealTime, holdsForSavedSettingsAfterTheFirstTime) {
    std::uint32_t size = 0;
    mModel->GetChunkSize(kChunkID, &size);
    ChunkRecord saved(size);
    saved->fChunkID = kChunkID;
    mModel->GetChunk(kChunkID, saved.get());
    std::uint8_t isEqual = 0;
    mModel->CompareActiveChunk(saved.get(), &isEqual);

    const RealTimeReport report = reportOf([&] {
        EXPECT_EQ(mModel->GetChunkSize(kChunkID, &size), AAX_SUCCESS);
        EXPECT_EQ(mModel->GetChunk(kChunkID, saved.get()), AAX_SUCCESS);
        EXPECT_EQ(mModel->CompareActiveChunk(saved.get(), &isEqual), AAX_SUCCESS);
        EXPECT_EQ(isEqual, 1);
        change(*mModel, "Gain", mHost.automation.requested, 0.25);
        EXPECT_EQ(mModel->CompareActiveChunk(saved.get(), &isEqual), AAX_SUCCESS);
        EXPECT_EQ(isEqual, 0);
        EXPECT_EQ(mModel->SetChunk(kChunkID, saved.get()), AAX_SUCCESS);
    });
    EXPECT_EQ(report.allocations + report.files + report.waits, 0) << textOf(report);
}

TEST(ParametersRealTimeGuard, seesAnAllocationOnTheSameWay) {
    DataModelFixture fixture; // its host keeps every request and packet in memory of its own
    fixture.initialize();
    const double answer = 1.0;
    const RealTimeReport report = reportOf([&] { change(*fixture.model, "Gain", answer, answer); });
    EXPECT_GT(report.allocations, 0);
}

} // namespace
} // namespace varno::test
