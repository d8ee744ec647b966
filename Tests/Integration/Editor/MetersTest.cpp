// The gain-reduction meters.
#include "Tests/Integration/Editor/EditorTest.h"

#include "Tests/Support/Signal.h"

#include <cmath>

using namespace varno;
using namespace varno::test;

namespace layout = DemoGain_ViewLayout;

namespace {

// The lamps that a meter lights for a tap's value, by the display's scale.
int lampsFor(float x) {
    const float y = (2.1271815F * x - 2.0384471F * x * x * x) + 0.916367F * x * x * x * x * x;
    const float dark = std::clamp(1.0F - y, 0.0F, 1.0F);
    return layout::kMeterSteps - static_cast<int>(std::lround(layout::kMeterSteps * dark));
}

class Meters : public OneEditorTest {
protected:
    // The lamps from the right that are lit, -1 where they do not form one row.
    int litLamps(const std::string& id) {
        const layout::Control& meter = controlOf(id);
        const Picture seen = window->picture(id);
        const Picture lit = art().control(meter, layout::Art::kMeterOn, 0);
        const Picture dark = art().control(meter, layout::Art::kMeterOff, 0);
        int count = 0;
        for (int lamp = layout::kMeterSteps - 1; lamp >= 0; --lamp) {
            const Place middle{(2 * lamp + 1) * seen.width() / (2 * layout::kMeterSteps), seen.height() / 2};
            const bool isLit = channelDifference(seen.at(middle), lit.at(middle)) <
                               channelDifference(seen.at(middle), dark.at(middle));
            if (isLit && count != layout::kMeterSteps - 1 - lamp) {
                return -1;
            }
            count += isLit ? 1 : 0;
        }
        return count;
    }
    ::testing::AssertionResult lights(const std::string& id, int lamps) {
        if (loop.await([&] { return litLamps(id) == lamps; })) {
            return ::testing::AssertionSuccess();
        }
        return ::testing::AssertionFailure() << id << " lights " << litLamps(id) << ", not " << lamps;
    }
};

TEST_F(Meters, areDarkWithoutReductionAndFullAtTheMost) {
    EXPECT_TRUE(shows(*window, "METERGR1", 0));
    setMeter(*instance, eMeterTap_GainReductionLeft, 1.0F);
    EXPECT_TRUE(lights("METERGR1", layout::kMeterSteps));
    const Picture full = art().control(controlOf("METERGR1"), layout::Art::kMeterOn, 0);
    EXPECT_TRUE(loop.await([&] { return largestDifference(full, window->picture("METERGR1")) <= 2; }));
    EXPECT_TRUE(shows(*window, "METERGR2", 0)) << "each shows its own channel";
    setMeter(*instance, eMeterTap_GainReductionLeft, 0.0F);
    EXPECT_TRUE(shows(*window, "METERGR1", 0));
}

TEST_F(Meters, showHalfTheReductionByTheirLaw) {
    EXPECT_EQ(lampsFor(0.5F), 13);
    setMeter(*instance, eMeterTap_GainReductionLeft, 0.5F);
    EXPECT_TRUE(lights("METERGR1", 13));
    setMeter(*instance, eMeterTap_GainReductionRight, 0.5F);
    EXPECT_TRUE(lights("METERGR2", 13));
}

TEST_F(Meters, followTheirLawUpAndDown) {
    for (const float x : {0.02F, 0.05F, 0.1F, 0.2F, 0.35F, 0.8F, 1.5F, 0.35F, 0.1F, 0.0F}) {
        setMeter(*instance, eMeterTap_GainReductionLeft, x);
        setMeter(*instance, eMeterTap_GainReductionRight, 1.0F - std::min(x, 1.0F));
        EXPECT_TRUE(lights("METERGR1", lampsFor(x))) << x;
        EXPECT_TRUE(lights("METERGR2", lampsFor(1.0F - std::min(x, 1.0F)))) << x;
    }
}

TEST_F(Meters, showWhatTheSignalPathDoes) {
    automate(*instance, {{"Gain", 1.0}, {"Mix", 1.0}, {"Ratio", 1.0}, {"Hot", 1.0}, {"Atk", 0.0}});
    render(*instance, noise(2, 20000, 1, 6.0));
    const float reduction = meter(*instance, eMeterTap_GainReductionLeft);
    ASSERT_GT(lampsFor(reduction), 2) << reduction;
    EXPECT_TRUE(lights("METERGR1", lampsFor(reduction)));
    EXPECT_TRUE(lights("METERGR2", lampsFor(reduction))) << "both show the left channel";
}

TEST_F(Meters, areNoMatterToTheHand) {
    setMeter(*instance, eMeterTap_GainReductionLeft, 0.5F);
    EXPECT_TRUE(lights("METERGR1", 13));
    click(*window, "METERGR1");
    EXPECT_TRUE(window->offers().empty());
}

} // namespace
