#include "DemoGain_Oversampling.h"
#include "Edit/EditSound.h"
#include "Surround/Settings/EffectHost.h"
#include "Tests/Apps/varno/Session/FakeBackend.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

// The quality of an effect that plays a loop, while it plays.

namespace varno::test {
namespace {

constexpr int kFrames = 24'000; // of the loop
constexpr int kBlock = 480;

class EditQuality : public ProgramTest {
protected:
    EditQuality() {
        makeMusic("in.wav", kWavFloat, 1, kFrames);
        const Sound sound = readReals(path("in.wav"));
        std::vector<float> samples(sound.reals.begin(), sound.reals.end());
        auto backend = std::make_unique<FakeBackend>(LiveRequest{.inputs = 0, .outputs = 1});
        mBackend = backend.get();
        mSound.emplace(mEffect, AudioLoop({std::move(samples)}), std::move(backend));
    }
    // The loop a number of times, as it is heard now.
    std::vector<double> heard(int rounds) const {
        std::vector<double> all;
        std::vector<float> block(kBlock);
        float* const outputs[] = {block.data()};
        for (int frame = 0; frame < rounds * kFrames; frame += kBlock) {
            mBackend->run(nullptr, outputs, kBlock);
            all.insert(all.end(), block.begin(), block.end());
        }
        return all;
    }
    // The same as the program renders it.
    std::vector<double> rendered(const std::string& quality, int rounds) const {
        Sound repeated = readReals(path("in.wav"));
        repeated.format = kWavFloat;
        const std::vector<double> once = repeated.reals;
        for (int round = 1; round < rounds; ++round) {
            repeated.reals.insert(repeated.reals.end(), once.begin(), once.end());
        }
        writeSound(path("rounds.wav"), repeated);
        varnoOut({"render", "--quiet", "--force", "--format", "float", "--quality", quality, "rounds.wav",
                  "out.wav"});
        return readReals(path("out.wav")).reals;
    }
    int reportedLatency() {
        EXPECT_EQ(mSound->check(), std::nullopt);
        return mBackend->latencyFrames();
    }

    Instance mInstance{Module::linked(linkedEntryPoints(), effectHostOptions()), {.channels = 1}};
    Oversampling mEffect{mInstance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .canChange = true}};
    FakeBackend* mBackend = nullptr; // destroyed together with mSound
    std::optional<EditSound> mSound;
};

TEST_F(EditQuality, ChosenBeforeTheFirstBlockItIsThatOfARenderToTheBit) {
    mSound->effect().setFactor(4);
    EXPECT_EQ(heard(2), rendered("4x", 2));
    EXPECT_EQ(reportedLatency(), 46);
}

// Followers and filters forget what was before the change.
TEST_F(EditQuality, ChosenWhileItPlaysItBecomesThatOfARender) {
    EXPECT_EQ(reportedLatency(), 1);
    EXPECT_EQ(heard(2), rendered("1x", 2));
    mSound->effect().setFactor(4);
    constexpr int kRounds = 8;
    const std::vector<double> all = heard(kRounds);
    EXPECT_EQ(reportedLatency(), 46);
    const std::vector<double> expected = rendered("4x", 2 + kRounds);
    double difference = 0.0;
    for (std::size_t i = 0; i < kFrames; ++i) {
        difference =
            std::max(difference, std::abs(all[all.size() - 1 - i] - expected[expected.size() - 1 - i]));
    }
    RecordProperty("difference", std::to_string(difference));
    EXPECT_LT(difference, 1e-6);
    mSound->effect().setFactor(1);
    heard(1);
    EXPECT_EQ(reportedLatency(), 1);
}

} // namespace
} // namespace varno::test
