// When the module receives the values of a glide.
#include "Shared/GlidingValues.h"
#include "Tests/Integration/HostedEffect.h"

#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

using Move = GlidingValues::Move;

constexpr std::int32_t kForever = std::numeric_limits<std::int32_t>::max();
// The places of parameters among the controls: the master bypass is none.
constexpr std::size_t kGain = 0;
constexpr std::size_t kVolume = 7;
constexpr std::size_t kRatio = 9;

class GlidingValuesOf : public HostedEffect {
protected:
    GlidingValuesOf()
        : mInstance(makeInstance(module())),
          mValues(*mInstance) {
        for (std::size_t control = 0; control < mValues.size(); ++control) {
            mValues.moveTo(control, 0.5F, Move::kAtOnce);
        }
        give();
    }

    // What is made from the module ends before it is asked for what is left.
    void TearDown() override {
        mInstance.reset();
        HostedEffect::TearDown();
    }

    double give(const char* id = "Gain") {
        mValues.giveTo(*mInstance);
        return mInstance->normalized(id);
    }

    std::unique_ptr<Instance> mInstance;
    GlidingValues mValues;
};

TEST_F(GlidingValuesOf, allParametersButTheMasterBypass) {
    EXPECT_EQ(mValues.size() + 1, mInstance->parameters().size());
    EXPECT_EQ(mInstance->normalized("MasterBypassID"), 0.0);
    EXPECT_EQ(mInstance->normalized("LinkSw"), 0.5);
    EXPECT_EQ(mValues.fallback(kGain), 0.5F);
    EXPECT_EQ(mValues.framesHeld(), kForever);
}

// 10 ms at 48 kHz are 30 steps of 16 frames.
TEST_F(GlidingValuesOf, moveInThirtySteps) {
    mValues.moveTo(kGain, 1.0F, Move::kGlide);
    for (int step = 1; step < 30; ++step) {
        EXPECT_NEAR(give(), 0.5 + 0.5 * step / 30.0, 1e-6) << step;
        EXPECT_EQ(mValues.framesHeld(), kGlideGrainFrames);
        mValues.passed(kGlideGrainFrames);
    }
    EXPECT_EQ(give(), 1.0);
    EXPECT_EQ(mValues.framesHeld(), kForever);
}

TEST_F(GlidingValuesOf, jumpWhereThereIsNothingInBetween) {
    mValues.moveTo(kRatio, 1.0F, Move::kGlide);
    EXPECT_EQ(give("Ratio"), 1.0);
    EXPECT_EQ(mValues.framesHeld(), kForever);
}

TEST_F(GlidingValuesOf, waitForTheStepOfAnotherGlideOrBeginHere) {
    mValues.moveTo(kGain, 1.0F, Move::kGlide);
    give();
    mValues.passed(5);
    mValues.moveTo(kVolume, 1.0F, Move::kGlide);
    EXPECT_EQ(give("Volume"), 0.5);
    EXPECT_EQ(mValues.framesHeld(), 11);
    mValues.moveTo(kVolume, 1.0F, Move::kGlideFromHere);
    EXPECT_NEAR(give("Volume"), 0.5 + 0.5 / 30.0, 1e-6);
    EXPECT_EQ(mValues.framesHeld(), 11);
}

TEST_F(GlidingValuesOf, takeOneFirstStepHoweverTheyBegin) {
    mValues.moveTo(kGain, 1.0F, Move::kGlideFromHere);
    EXPECT_NEAR(give(), 0.5 + 0.5 / 30.0, 1e-6);
    EXPECT_EQ(mValues.framesHeld(), kGlideGrainFrames);
}

TEST_F(GlidingValuesOf, settleWhereTheyLeadTo) {
    mValues.moveTo(kGain, 1.0F, Move::kGlide);
    give();
    mValues.passed(3);
    mValues.settle();
    EXPECT_EQ(give(), 1.0);
    EXPECT_EQ(mValues.framesHeld(), kForever);
}

TEST_F(GlidingValuesOf, areLimitedToTheirRange) {
    mValues.moveTo(kGain, 7.0F, Move::kAtOnce);
    EXPECT_EQ(give(), 1.0);
    mValues.moveTo(kGain, -7.0F, Move::kAtOnce);
    EXPECT_EQ(give(), 0.0);
}

} // namespace
} // namespace varno::test
