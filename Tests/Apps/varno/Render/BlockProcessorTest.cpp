#include "Render/BlockProcessor.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"

#include <gmock/gmock.h>

#include <cmath>

namespace varno::test {
namespace {

using testing::ElementsAre;

constexpr int kStreamFrames = 1000;

class BlockProcessorTest : public testing::Test {
protected:
    BlockProcessorTest() {
        for (const double sample : testReals(kStreamFrames)) {
            mNoise.push_back(static_cast<float>(sample));
        }
        mSetup.channels = 1;
        mSetup.maximumFrames = kStreamFrames;
    }

    // The noise processed by a new instance, in portions of that many frames.
    std::vector<float> processed(const std::vector<AutomationStep>& steps, int blockFrames, int portion) {
        Instance instance(mModule, mSetup);
        Oversampling effect(instance, {});
        BlockProcessor processor(effect, steps, blockFrames);
        mBlockStarts.clear();
        processor.setBlockListener([&](std::int64_t frame, std::span<const float> meters) {
            mBlockStarts.push_back(frame);
            EXPECT_EQ(meters.size(), instance.meters().ids().size());
        });
        auto samples = mNoise;
        for (int done = 0; done < kStreamFrames; done += portion) {
            float* channels[] = {samples.data() + done};
            processor.process(channels, std::min(portion, kStreamFrames - done));
        }
        processor.finish();
        mLargest = processor.largestMeters();
        return samples;
    }

    std::shared_ptr<Module> mModule = Module::open(VARNO_MODULE_BUNDLE);
    InstanceSetup mSetup;
    std::vector<float> mNoise;
    std::vector<std::int64_t> mBlockStarts;
    std::vector<float> mLargest;
};

TEST_F(BlockProcessorTest, KeepsItsBlocksWhateverThePortions) {
    for (const int portion : {1, 7, 300, 999, kStreamFrames}) {
        processed({}, 300, portion);
        EXPECT_THAT(mBlockStarts, ElementsAre(0, 300, 600, 900)) << portion;
    }
    processed({}, 500, 123);
    EXPECT_THAT(mBlockStarts, ElementsAre(0, 500));
}

TEST_F(BlockProcessorTest, PortionsAndBlocksDoNotChangeTheSound) {
    const std::vector<AutomationStep> steps = {{0, "Hot", 0.5}, {333, "Hot", 1.0}, {700, "Mix", 0.5}};
    const auto expected = processed(steps, kStreamFrames, kStreamFrames);
    EXPECT_NE(expected, mNoise);
    for (const int blockFrames : {1, 64, 333, 999}) {
        for (const int portion : {1, 50, kStreamFrames}) {
            EXPECT_TRUE(processed(steps, blockFrames, portion) == expected) << blockFrames << ' ' << portion;
        }
    }
}

TEST_F(BlockProcessorTest, LargestMetersDoNotDependOnBlocks) {
    processed({}, kStreamFrames, kStreamFrames);
    const auto expected = mLargest;
    EXPECT_GT(expected[0], 0.0F);
    for (const int blockFrames : {1, 64, 333}) {
        processed({}, blockFrames, kStreamFrames);
        for (const std::size_t gainReduction : {0U, 1U}) {
            EXPECT_EQ(mLargest[gainReduction], expected[gainReduction]) << blockFrames;
        }
    }
}

TEST_F(BlockProcessorTest, StepsOfOneFrameApplyInOrder) {
    const auto bypassedLast =
        processed({{100, "MasterBypassID", 0.0}, {100, "MasterBypassID", 1.0}}, 512, 512);
    EXPECT_TRUE(std::equal(mNoise.begin() + 100, mNoise.end(), bypassedLast.begin() + 100));
    EXPECT_NE(bypassedLast[99], mNoise[99]);
}

TEST_F(BlockProcessorTest, WithoutFramesThereIsNoBlock) {
    Instance instance(mModule, mSetup);
    Oversampling effect(instance, {});
    BlockProcessor processor(effect, {}, 512);
    bool wasTold = false;
    processor.setBlockListener([&](std::int64_t, std::span<const float>) { wasTold = true; });
    float* channels[] = {mNoise.data()};
    processor.process(channels, 0);
    processor.finish();
    EXPECT_FALSE(wasTold);
}

} // namespace
} // namespace varno::test
