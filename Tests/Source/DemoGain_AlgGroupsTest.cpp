// Instances of one call have the result of one after the other, however their memory is connected.
#include "Alg/DemoGain_DenormalMode.h"
#include "Tests/Reference/ReferenceRoutine.h"
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace varno::test::algGroups {

namespace {

constexpr std::size_t kMostInstances = 17;
constexpr std::size_t kLongest = 260;

class Dice {
public:
    explicit Dice(std::uint32_t seed)
        : mEngine(seed) {}

    // 0 to count - 1.
    std::size_t below(std::size_t count) { return static_cast<std::uint32_t>(mEngine()) % count; }
    bool percent(std::size_t chance) { return below(100) < chance; }
    std::mt19937& engine() { return mEngine; }

private:
    std::mt19937 mEngine;
};

// A mono or stereo instance's place in the audio memory: where each channel's first sample is.
struct Wiring {
    std::size_t in[2];
    std::size_t out[2];
};

// Several instances and their audio memory. Two worlds of one seed differ in nothing.
class World {
public:
    World(const AlgVariant& variant, std::uint32_t seed)
        : mVariant(variant),
          mDice(seed),
          mAudio(kMostInstances * kRegions * kLongest) {
        const std::size_t count = 1 + mDice.below(kMostInstances);
        mConnected = std::vector<std::size_t>{0, 5, 40}[mDice.below(3)];
        const std::size_t frames = 1 + mDice.below(kLongest);
        mAudio = noise(1, mAudio.size(), seed, -6.0)[0];
        for (std::size_t i = 0; i < count; ++i) {
            addInstance(frames);
        }
        for (std::size_t i = 0; i < count; ++i) {
            place(i);
            mContexts.push_back(&mInstances[i].context());
        }
        for (std::size_t i = 0; i < count; ++i) {
            connect(i);
        }
    }

    // Whether the literal evaluation says what is to happen: an output that overlaps the instance's own input
    // or other output with an offset depends on how many frames are read before they are written, and so does
    // a mix that lies in the instance's output.
    bool isLiteralDefined() const {
        return !mIsMixInOutput && std::none_of(mWirings.begin(), mWirings.end(), [&](const Wiring& wiring) {
            const auto meet = [](std::size_t left, std::size_t right) {
                return std::max(left, right) - std::min(left, right) < kLongest;
            };
            bool overlaps = mVariant.channels == 2 && meet(wiring.out[0], wiring.out[1]);
            for (std::size_t channel = 0; channel < mVariant.channels; ++channel) {
                for (std::size_t other = 0; other < mVariant.channels; ++other) {
                    overlaps = overlaps || (wiring.in[channel] != wiring.out[other] &&
                                            meet(wiring.in[channel], wiring.out[other]));
                }
            }
            return overlaps;
        });
    }

    void processTogether() { process(mContexts.data(), mContexts.size()); }

    void processOneByOne() {
        for (SDemoGain_Alg_Context*& context : mContexts) {
            process(&context, 1);
        }
    }

    void processLiterally() {
        const DemoGain_DenormalMode audioMode;
        for (SDemoGain_Alg_Context* const context : mContexts) {
            if (mVariant.channels == 1) {
                reference::processMono(*context);
            } else {
                reference::processStereo(*context);
            }
        }
    }

    std::string differenceFrom(World& expected) {
        std::string text = firstDifference(expected.mAudio, mAudio);
        for (std::size_t i = 0; text.empty() && i < mInstances.size(); ++i) {
            text = firstDifference(expected.mInstances[i], mInstances[i]);
            if (!text.empty()) {
                text.insert(0, "instance " + std::to_string(i) + ": ");
            }
        }
        return text;
    }

private:
    static constexpr std::size_t kRegions = 4; // inputs and outputs
    static std::size_t region(std::size_t instance, std::size_t index) {
        return (instance * kRegions + index) * kLongest;
    }

    void process(SDemoGain_Alg_Context* const* contexts, std::size_t count) {
        DemoGain_ProcessInstances(*mVariant.routine, mVariant, contexts, contexts + count);
    }

    void addInstance(std::size_t usualFrames) {
        const double rate = mDice.percent(85) ? 48000.0 : 44100.0;
        AlgInstance& instance = mInstances.emplace_back(mVariant, rate);
        AlgParameters parameters = randomParameters(mDice.engine());
        parameters.gain *= 0.5F; // 0 dB at most, so that instances in a row stay finite
        parameters.volume *= 0.5F;
        instance.set(parameters);
        instance.taps() = {0.0F, mDice.percent(20) ? 0.5F : 0.0F, 0.0F, mDice.percent(20) ? 0.2F : 0.0F};
        mFrames.push_back(mDice.percent(90) ? usualFrames : mDice.below(kLongest + 1));
        SDemoGain_Alg_Context& context = instance.context();
        for (const float** unread : {&context.mGainDB, &context.mVolumeDB, &context.mAtk, &context.mRls,
                                     &context.mAuto, &context.mUK, &context.mRatio, &context.mSampleRate}) {
            *unread = mDice.percent(50) ? *unread : nullptr;
        }
        if (mVariant.channels == 1 && mDice.percent(50)) {
            context.mLinkSw = nullptr;
        }
    }

    // Separate buffers, or those of others.
    void place(std::size_t i) {
        const auto another = [&] { return mDice.below(mInstances.size()); };
        const auto shift = [&] { return mDice.percent(50) ? 0 : mDice.below(kLongest); };
        Wiring wiring{{region(i, 0), region(i, 1)}, {region(i, 2), region(i, 3)}};
        for (std::size_t channel = 0; channel < mVariant.channels; ++channel) {
            if (mDice.percent(30)) {
                wiring.out[channel] =
                    wiring.in[mDice.percent(80) ? channel : mVariant.channels - 1 - channel];
            }
            if (mDice.percent(10)) { // an input is no obstacle
                wiring.in[channel] = region(another(), mDice.below(2));
            }
            if (mDice.percent(mConnected)) {
                wiring.in[channel] = std::min(region(another(), 2) + shift(), mAudio.size() - kLongest);
            }
            if (mDice.percent(mConnected)) {
                wiring.out[channel] =
                    std::min(region(another(), mDice.below(kRegions)) + shift(), mAudio.size() - kLongest);
            }
        }
        mWirings.push_back(wiring);
        Buffers& buffers = mBuffers.emplace_back();
        for (std::size_t channel = 0; channel < 2; ++channel) {
            buffers.in[channel] = mAudio.data() + wiring.in[channel];
            buffers.out[channel] = mAudio.data() + wiring.out[channel];
        }
        mInstances[i].attach(buffers.in, buffers.out, static_cast<std::int32_t>(mFrames[i]));
    }

    // Lets an instance share more than audio with another one.
    void connect(std::size_t i) {
        const std::size_t other = mDice.below(mInstances.size());
        SDemoGain_Alg_Context& context = mInstances[i].context();
        if (mDice.percent(mConnected / 4)) {
            context.mState = &mInstances[other].state();
        }
        if (mDice.percent(mConnected / 4)) {
            context.mMeters = mInstances[other].taps().data();
        }
        if (mDice.percent(mConnected / 4) && other != i) {
            context.mMix = mBuffers[other].out[0];
            for (float* output : mBuffers[i].out) {
                mIsMixInOutput =
                    mIsMixInOutput || (context.mMix >= output && context.mMix < output + kLongest);
            }
        }
        if (mDice.percent(mConnected / 4) && other != i) {
            context.mHP = &mInstances[other].taps()[eMeterTap_Input];
        }
        if (mDice.percent(mConnected / 4)) {
            mContexts[i] = &mInstances[other].context();
        }
    }

    struct Buffers {
        const float* in[2];
        float* out[2];
    };

    AlgVariant mVariant;
    Dice mDice;
    std::vector<float> mAudio;
    std::size_t mConnected = 0; // Chance in percent that memory belongs to another instance too.
    std::deque<AlgInstance> mInstances;
    std::vector<std::size_t> mFrames;
    std::vector<Wiring> mWirings;
    std::deque<Buffers> mBuffers;
    std::vector<SDemoGain_Alg_Context*> mContexts;
    bool mIsMixInOutput = false;
};

class DemoGain_AlgGroups : public testing::TestWithParam<AlgVariant> {};

TEST_P(DemoGain_AlgGroups, TogetherAsOneByOneAndAsTheLiteralEvaluation) {
    constexpr std::uint32_t kSeed = 611;
    constexpr int kCalls = 3;
    int literallyDefined = 0;
    const auto worlds = static_cast<std::uint32_t>(150 * testScale());
    for (std::uint32_t i = 0; i < worlds; ++i) {
        World together(GetParam(), kSeed + i);
        World oneByOne(GetParam(), kSeed + i);
        World literal(GetParam(), kSeed + i);
        for (int call = 0; call < kCalls; ++call) {
            together.processTogether();
            oneByOne.processOneByOne();
            ASSERT_EQ(together.differenceFrom(oneByOne), "") << "seed " << kSeed + i << ", call " << call;
            if (together.isLiteralDefined()) {
                literal.processLiterally();
                ASSERT_EQ(together.differenceFrom(literal), "") << "seed " << kSeed + i << ", call " << call;
                ++literallyDefined;
            }
        }
    }
    EXPECT_GT(literallyDefined, 150) << "most worlds should be compared with the literal evaluation";
}

// Output that lies in the input's memory, shifted so that short chunks read what has been written and long
// ones what has not.
TEST_P(DemoGain_AlgGroups, AShiftedOutputIsTheSameAloneAndTogether) {
    constexpr std::size_t kFrames = 256;
    constexpr std::size_t kShift = 60;
    const auto render = [](bool isTogether) {
        std::deque<AlgInstance> instances;
        std::deque<std::vector<float>> audio;
        std::deque<std::array<const float*, 2>> inputs;
        std::deque<std::array<float*, 2>> outputs;
        std::vector<SDemoGain_Alg_Context*> contexts;
        const std::size_t channels = GetParam();
        for (std::uint32_t i = 0; i < 2; ++i) {
            AlgInstance& instance = instances.emplace_back(GetParam(), 48000.0);
            float* const memory = audio.emplace_back(noise(1, 2 * (kFrames + kShift), i, 0.0)[0]).data();
            float* const second = memory + (channels - 1) * (kFrames + kShift);
            instance.attach(inputs.emplace_back(std::array<const float*, 2>{memory, second}).data(),
                            outputs.emplace_back(std::array{memory + kShift, second + kShift}).data(),
                            static_cast<std::int32_t>(kFrames));
            contexts.push_back(&instance.context());
        }
        const std::size_t count = isTogether ? 2 : 1;
        for (std::size_t i = 0; i < contexts.size(); i += count) {
            DemoGain_ProcessInstances(*GetParam().routine, channels, &contexts[i], &contexts[i] + count);
        }
        return audio;
    };
    EXPECT_EQ(render(true), render(false));
}

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgGroups, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test::algGroups
