// The automatic matching of the volume, in real time.
#include "Surround/Settings/EditedSettings.h"
#include "Tests/Integration/Editor/EditorTest.h"

#include <cmath>
#include <numeric>

namespace varno::test {
namespace {

constexpr int kMeasurements = 5;

// The volume that a measurement of these levels aims at.
double targetOf(double input, double output) {
    const double ratio = std::clamp(input / std::max(output, 0.01), 0.1, 10.0);
    return (20.0 * std::log10(ratio) + 20.0) * 0.025;
}

class AutoGain : public OneEditorTest {
protected:
    AutoGain() {
        instance->setNormalized("ASw", 1.0);
        instance->setNormalized("Volume", 0.5);
        setLevels(0.0F, 0.0F);
    }

    void setLevels(float input, float output) {
        setMeter(*instance, eMeterTap_Input, input);
        setMeter(*instance, eMeterTap_Output, output);
    }
    double volume() const { return instance->normalized("Volume"); }
    // Runs the loop until the volume has changed once.
    bool awaitGlide() {
        const double before = volume();
        return loop.await([&] { return volume() != before; });
    }
    bool awaitVolume(double target) {
        return loop.await([&] { return std::abs(volume() - target) < kRounding; });
    }
    // Runs the loop for the given time.
    void pass(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        loop.await([&] { return std::chrono::steady_clock::now() >= end; });
    }
};

TEST_F(AutoGain, aimsAtTheMeanOfFiveMeasurementsAndThenRests) {
    click(*window, "UK");
    std::vector<double> targets;
    // Levels that raise and lower the volume in turn.
    const float outputs[kMeasurements] = {0.5F, 2.0F, 0.25F, 4.0F, 0.3F};
    for (const float output : outputs) {
        // A measurement takes the highest levels since the last one: they change right after it.
        setLevels(1.0F, output);
        ASSERT_TRUE(awaitGlide()) << "measurement " << targets.size() + 1;
        targets.push_back(targetOf(1.0, output));
        const double mean =
            std::accumulate(targets.begin(), targets.end(), 0.0) / static_cast<double>(targets.size());
        setLevels(0.0F, 0.0F); // no signal, no time: the glide ends before the next measurement
        EXPECT_TRUE(awaitVolume(mean)) << "measurement " << targets.size() << " aims at " << mean
                                       << ", the volume stands at " << volume();
    }
    const double after = volume();
    setLevels(1.0F, 0.1F);
    pass(std::chrono::milliseconds(1000));
    EXPECT_EQ(volume(), after) << "a sixth measurement";
}

TEST_F(AutoGain, measuresWhileAudioRuns) {
    // A second of a sine whose level stays: after the series input and output are as loud as each other.
    std::vector<float> sine(480);
    for (std::size_t i = 0; i < sine.size(); ++i) {
        sine[i] =
            0.25F * static_cast<float>(std::sin(2.0 * std::numbers::pi * static_cast<double>(i) / 48.0));
    }
    std::vector<float> left(sine);
    std::vector<float> right(sine);
    const float* inputs[2] = {sine.data(), sine.data()};
    float* outputs[2] = {left.data(), right.data()};
    const auto process = [&] { instance->process(inputs, outputs, static_cast<std::int32_t>(sine.size())); };
    for (int i = 0; i < 200; ++i) {
        process();
    }
    const double target = targetOf(meter(*instance, eMeterTap_Input), meter(*instance, eMeterTap_Output));
    ASSERT_GT(std::abs(target - volume()), 0.001) << "nothing to match";
    click(*window, "Band");
    click(*window, "Band");
    EXPECT_TRUE(loop.await([&] {
        process();
        return std::abs(volume() - target) < 0.02;
    })) << volume()
        << " is not " << target;
}

TEST_F(AutoGain, beginsWithTheNextGestureAndNotWithItsOwnSwitch) {
    setLevels(1.0F, 0.5F);
    click(*window, "ASw");
    click(*window, "ASw");
    ASSERT_EQ(instance->normalized("ASw"), 1.0);
    click(*window, "LinkSw");
    click(*window, "HSw");
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(volume(), 0.5);
    click(*window, "HP");
    EXPECT_TRUE(awaitVolume(targetOf(1.0, 0.5)));
}

// It begins with gestures in the editor: what a host sets, as for a value that is typed, may be automation.
TEST_F(AutoGain, isNotStartedByValuesThatTheHostSets) {
    CompareSlots slots(settingsOf(*instance));
    EditedSettings edited(*instance, slots);
    setLevels(1.0F, 0.5F);
    edited.set(*settingOf("Hot"), 0.5F);
    edited.set(*settingOf("HP"), 1.0F);
    edited.set(*settingOf("Gain"), 0.25F);
    EXPECT_TRUE(edited.undo());
    edited.setAll(defaultSettings(*instance), "Preset");
    instance->setNormalized("ASw", 1.0);
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(volume(), 0.5);
    click(*window, "UK");
    EXPECT_TRUE(awaitVolume(targetOf(1.0, 0.5)));
}

TEST_F(AutoGain, doesNothingWhileItIsOff) {
    click(*window, "ASw");
    ASSERT_EQ(instance->normalized("ASw"), 0.0);
    setLevels(1.0F, 0.5F);
    click(*window, "HP");
    turnKnob(*window, *instance, "Gain", 0.8);
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(volume(), 0.5);
}

TEST_F(AutoGain, waitsForASignal) {
    setLevels(0.005F, 0.001F);
    click(*window, "HP");
    pass(std::chrono::milliseconds(700));
    EXPECT_EQ(volume(), 0.5);
    setLevels(0.5F, 0.5F * 0.5F);
    EXPECT_TRUE(awaitVolume(targetOf(0.5, 0.25)));
}

TEST_F(AutoGain, keepsWithinTwentyDecibels) {
    setLevels(1.0F, 0.0F);
    click(*window, "HP");
    EXPECT_TRUE(awaitVolume(1.0));
    setLevels(0.02F, 4.0F);
    click(*window, "HP");
    EXPECT_TRUE(awaitVolume(0.0));
}

TEST_F(AutoGain, moreGainTakesVolumeAwayAtOnce) {
    instance->setNormalized("Gain", 0.4);
    instance->setNormalized("Volume", 0.45);
    point(*window, "Gain", pullOf(0.0));
    press();
    point(*window, "Gain", pullOf(0.1));
    release();
    EXPECT_NEAR(instance->normalized("Gain"), 0.5, kRounding);
    EXPECT_NEAR(volume(), 0.35, kRounding);
    EXPECT_TRUE(shows(*window, "Volume", knobPicture(volume())));
}

TEST_F(AutoGain, lessGainGivesNoVolumeBack) {
    instance->setNormalized("Gain", 0.5);
    instance->setNormalized("Volume", 0.45);
    turnKnob(*window, *instance, "Gain", 0.3);
    EXPECT_EQ(volume(), static_cast<double>(0.45F));
}

TEST_F(AutoGain, takesNoMoreVolumeThanThereIs) {
    instance->setNormalized("Gain", 0.2);
    instance->setNormalized("Volume", 0.05);
    point(*window, "Gain", pullOf(0.0));
    press();
    point(*window, "Gain", pullOf(0.2));
    release();
    EXPECT_EQ(volume(), 0.0);
}

} // namespace
} // namespace varno::test
