#include "AAX_CChunkDataParser.h"
#include "AAX_CEffectParameters.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <functional>

namespace varno::test {
namespace {

// The longest identifier: a string cannot hold it without allocating.
constexpr char kLongID[] = "ParameterWithAVeryLongIdentifie";
static_assert(sizeof(kLongID) == 32);

// How often an action allocates or frees memory.
int allocationsOf(const std::function<void()>& action) {
    RealTimeScope scope;
    action();
    return scope.finish().allocations;
}

class ParameterLookup : public testing::Test {
protected:
    ParameterLookup() {
        mEffect->onInit = [](TestEffect& self) {
            self.add(makeFloatParameter(kLongID));
            self.mPacketDispatcher.RegisterPacket(kLongID, 0);
            return AAX_SUCCESS;
        };
        mEffect->Initialize(&mHost);
    }
    ~ParameterLookup() override { mEffect->Uninitialize(); }

    QuietHost mHost;
    ACFPtr<TestEffect> mEffect = makeTestEffect();
};

TEST_F(ParameterLookup, ByIdentifierTakesNoMemory) {
    EXPECT_EQ(allocationsOf([&] {
                  AAX_IParameter* parameter = nullptr;
                  std::int32_t index = 0;
                  double value = 0.0;
                  EXPECT_EQ(mEffect->GetParameter(kLongID, &parameter), AAX_SUCCESS);
                  EXPECT_EQ(mEffect->GetParameterIndex(kLongID, &index), AAX_SUCCESS);
                  EXPECT_EQ(mEffect->GetParameterNormalizedValue(kLongID, &value), AAX_SUCCESS);
              }),
              0);
}

TEST_F(ParameterLookup, WhenAValueChangesTakesNoMemory) {
    EXPECT_EQ(allocationsOf([&] {
                  EXPECT_EQ(mEffect->SetParameterNormalizedValue(kLongID, 0.25), AAX_SUCCESS);
                  EXPECT_EQ(
                      mEffect->UpdateParameterNormalizedValue(kLongID, 0.25, AAX_eUpdateSource_Unspecified),
                      AAX_SUCCESS);
                  EXPECT_EQ(mEffect->GenerateCoefficients(), AAX_SUCCESS);
              }),
              0);
    EXPECT_EQ(mHost.automation.requested, 0.25);
    EXPECT_EQ(mHost.controller.lastField, 0) << "the packet has been posted";
}

TEST_F(ParameterLookup, InAChunkTakesNoMemory) {
    AAX_CChunkDataParser chunk;
    chunk.AddDouble(kLongID, 0.5);
    EXPECT_EQ(allocationsOf([&] {
                  double value = 0.0;
                  EXPECT_TRUE(chunk.FindDouble(kLongID, &value));
              }),
              0);
}

TEST_F(ParameterLookup, IsMeasured) {
    EXPECT_GT(allocationsOf([&] { mEffect->FilterParameterIDOnSave(kLongID); }), 0)
        << "a copy of the identifier must show";
}

} // namespace
} // namespace varno::test
