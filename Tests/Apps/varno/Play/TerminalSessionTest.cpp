#include "Play/TerminalSession.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

class ParameterDialTest : public testing::Test {
protected:
    std::shared_ptr<Module> mModule = Module::open(VARNO_MODULE_BUNDLE);
    LiveEffect mEffect{mModule, 2, 48'000.0};
    Instance& mInstance{mEffect.instance()};
    ParameterDial mDial{mEffect};
};

TEST_F(ParameterDialTest, ChoosesInAllDirectionsPastTheBypass) {
    EXPECT_TRUE(mDial.text().starts_with("Gain ")) << mDial.text();
    mDial.choose(1);
    EXPECT_TRUE(mDial.text().starts_with("HP ")) << mDial.text();
    mDial.choose(-1);
    mDial.choose(-1);
    EXPECT_TRUE(mDial.text().starts_with("LinkSw ")) << mDial.text();
    mDial.choose(1);
    EXPECT_TRUE(mDial.text().starts_with("Gain ")) << mDial.text();
}

TEST_F(ParameterDialTest, TurnsByStepsWithinTheRange) {
    mDial.turn(1);
    EXPECT_NEAR(mInstance.normalized("Gain"), 66.0 / 130.0, 1e-6);
    mDial.turn(-2);
    EXPECT_NEAR(mInstance.normalized("Gain"), 64.0 / 130.0, 1e-6);
    mDial.turn(-100);
    EXPECT_EQ(mInstance.normalized("Gain"), 0.0);
    mDial.turn(1000);
    EXPECT_EQ(mInstance.normalized("Gain"), 1.0);
    mDial.reset();
    EXPECT_EQ(mInstance.normalized("Gain"), 0.5);
}

TEST_F(ParameterDialTest, ASwitchHasTwoSteps) {
    mDial.choose(1);
    mDial.turn(1);
    EXPECT_EQ(mInstance.normalized("HP"), 1.0);
    mDial.turn(1);
    EXPECT_EQ(mInstance.normalized("HP"), 1.0);
    mDial.turn(-1);
    EXPECT_EQ(mInstance.normalized("HP"), 0.0);
}

TEST_F(ParameterDialTest, TurnsTheBypassOver) {
    EXPECT_FALSE(mDial.isBypassed());
    mDial.toggleBypass();
    EXPECT_TRUE(mDial.isBypassed());
    EXPECT_TRUE(mEffect.isBypassed());
    EXPECT_EQ(mInstance.normalized("MasterBypassID"), 0.0) << "a click, and a change of the settings";
    mDial.toggleBypass();
    EXPECT_FALSE(mDial.isBypassed());
    EXPECT_FALSE(mEffect.isBypassed());
}

TEST_F(ParameterDialTest, BringsTheEffectBackFromItsOwnBypassToo) {
    mInstance.setNormalized("MasterBypassID", 1.0);
    EXPECT_TRUE(mDial.isBypassed());
    mDial.toggleBypass();
    EXPECT_FALSE(mDial.isBypassed());
    EXPECT_EQ(mInstance.normalized("MasterBypassID"), 0.0);
    mEffect.setBypassed(true);
    mInstance.setNormalized("MasterBypassID", 1.0);
    mDial.toggleBypass();
    EXPECT_FALSE(mDial.isBypassed());
}

} // namespace
} // namespace varno::test
