#include "Host/Bypass.h"
#include "Host/Instance.h"
#include "Host/InstanceGroup.h"

#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Support/RealTimeGuard.h"

namespace varno {
namespace {

class InstanceRealTimeTest : public FixtureTest {
protected:
    test::RealTimeReport process(Instance& instance, std::int32_t frames) {
        std::vector<float> buffer(static_cast<std::size_t>(frames), 0.5F);
        const float* inputs[] = {buffer.data(), buffer.data()};
        float* outputs[] = {buffer.data(), buffer.data()};
        test::RealTimeScope scope;
        instance.process(inputs, outputs, frames);
        return scope.finish();
    }
};

TEST_F(InstanceRealTimeTest, ProcessNeitherLocksNorAllocates) {
    const auto instance = makeInstance({.maximumFrames = 64});
    // The very first buffer, then one per size with a value just set.
    EXPECT_EQ("", test::textOf(process(*instance, 64)));
    for (const std::int32_t frames : {0, 1, 32, 64, 500}) {
        instance->setNormalized("Gain", frames / 500.0);
        EXPECT_EQ("", test::textOf(process(*instance, frames)));
    }
}

TEST_F(InstanceRealTimeTest, NorDoesABypass) {
    const auto instance = makeInstance({.maximumFrames = 64});
    Oversampling effect(*instance, {.routineLatencyFrames = 1});
    Bypass bypass(effect);
    std::vector<float> buffer(500, 0.5F);
    float* channels[] = {buffer.data(), buffer.data()};
    for (const std::int32_t frames : {64, 0, 1, 500, 64, 500}) {
        bypass.set(!bypass.isBypassed());
        test::RealTimeScope scope;
        bypass.process(channels, channels, frames);
        EXPECT_EQ("", test::textOf(scope.finish())) << frames;
    }
}

TEST_F(InstanceRealTimeTest, NorDoesAGroup) {
    const auto first = makeInstance({.maximumFrames = 64});
    const auto second = makeInstance({.maximumFrames = 100});
    InstanceGroup group({first.get(), second.get()});
    std::vector<float> buffer(500, 0.5F);
    const float* inputs[] = {buffer.data(), buffer.data()};
    float* outputs[] = {buffer.data(), buffer.data()};
    for (const std::int32_t frames : {64, 0, 1, 500}) {
        second->setNormalized("Gain", frames / 500.0);
        const MemberBuffer buffers[] = {{inputs, outputs, frames}, {inputs, outputs, 50}};
        test::RealTimeScope scope;
        group.process(buffers);
        EXPECT_EQ("", test::textOf(scope.finish())) << frames;
    }
}

TEST_F(InstanceRealTimeTest, NorDoesOversamplingWhileItChanges) {
    const auto instance = makeInstance({.maximumFrames = 64});
    Oversampling effect(*instance, {.canChange = true});
    Bypass bypass(effect);
    std::vector<float> buffer(500, 0.5F);
    float* channels[] = {buffer.data(), buffer.data()};
    const BufferValue value{static_cast<std::size_t>(instance->parameter("Gain")->index), 0.25};
    for (const std::int32_t factor : {8, 2, 1, 4}) {
        for (const std::int32_t frames : {64, 0, 1, 500, 64, 500, 500}) {
            test::RealTimeScope scope;
            EXPECT_TRUE(effect.setFactorBeforeBuffer(factor));
            EXPECT_TRUE(instance->setBeforeBuffer({&value, 1}));
            bypass.process(channels, channels, frames);
            EXPECT_EQ("", test::textOf(scope.finish())) << factor << ' ' << frames;
        }
    }
}

TEST_F(InstanceRealTimeTest, ARoutineThatAllocatesIsNoticed) {
    const auto instance = makeInstance();
    std::unique_ptr<int> leak;
    fixture::setHook([&] { leak = std::make_unique<int>(1); });
    EXPECT_EQ(1, process(*instance, 16).allocations);
    fixture::setHook({});
}

} // namespace
} // namespace varno
