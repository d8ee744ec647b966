#include "Host/InstanceGroup.h"

#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureTest.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::ElementsAre;

// The gain of the fixture's effect at the normalized values 0.25 and 1.
constexpr double kQuarter = 0.25;

class InstanceGroupTest : public FixtureTest {
protected:
    void TearDown() override {
        fixture::setHook({});
        FixtureTest::TearDown();
    }

    // A member's audio, mono.
    struct Audio {
        explicit Audio(std::size_t frames, float value = 1.0F)
            : samples(frames, value) {}

        MemberBuffer buffer() { return {&input, &output, static_cast<std::int32_t>(samples.size())}; }

        std::vector<float> samples;
        const float* input = samples.data(); ///< In place, unless a test connects it.
        float* output = samples.data();
    };

    std::unique_ptr<Instance> makeMono(std::int32_t maximumFrames = 512) {
        return makeInstance({.channels = 1, .maximumFrames = maximumFrames});
    }

    static std::int64_t framesOf(const Instance& instance) {
        fixture::State state{};
        const auto bytes = instance.privateData(fixture::kState);
        std::copy_n(bytes.data(), sizeof state, reinterpret_cast<std::byte*>(&state));
        return state.frames;
    }
};

TEST_F(InstanceGroupTest, TheRoutineIsCalledOnceForAllMembers) {
    const auto first = makeMono();
    const auto second = makeMono();
    const auto third = makeMono();
    second->setNormalized("Gain", kQuarter);
    InstanceGroup group({first.get(), second.get(), third.get()});
    EXPECT_EQ(3U, group.size());
    int calls = 0;
    fixture::setHook([&] { ++calls; });
    Audio audio[] = {Audio(10), Audio(7), Audio(0)};
    group.process(std::vector{audio[0].buffer(), audio[1].buffer(), audio[2].buffer()});
    EXPECT_EQ(1, calls);
    EXPECT_THAT(audio[0].samples, testing::Each(first->normalized("Gain")));
    EXPECT_THAT(audio[1].samples, testing::Each(static_cast<float>(kQuarter)));
    EXPECT_EQ(10, first->position());
    EXPECT_EQ(7, second->position());
    EXPECT_EQ(0, third->position());
}

TEST_F(InstanceGroupTest, ThePacketsOfAllAreTakenUpBeforeTheFirstCall) {
    const auto divided = makeMono(8);
    const auto whole = makeMono(64);
    InstanceGroup group({divided.get(), whole.get()});
    int calls = 0;
    fixture::setHook([&] {
        if (++calls == 1) {
            // As if another thread had set them while the first call was under way.
            divided->setBeforeBuffer(std::vector<BufferValue>{{0, kQuarter}, {1, kQuarter}});
            whole->setBeforeBuffer(std::vector<BufferValue>{{0, kQuarter}, {1, kQuarter}});
        }
    });
    Audio audio[] = {Audio(16), Audio(16)};
    const auto before = static_cast<float>(divided->normalized("Gain"));
    group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
    EXPECT_EQ(3, calls);
    EXPECT_EQ(before, audio[0].samples.front());
    EXPECT_NE(before, audio[0].samples.back()) << "its second buffer takes up packets of its own";
    EXPECT_THAT(audio[1].samples, testing::Each(before));
}

TEST_F(InstanceGroupTest, AMemberProcessesAloneInBetween) {
    const auto first = makeMono();
    const auto second = makeMono();
    InstanceGroup group({first.get(), second.get()});
    Audio audio[] = {Audio(10), Audio(10), Audio(5)};
    first->process(&audio[2].input, &audio[2].output, 5);
    std::int64_t clock = -1;
    fixture::setHook([&] { clock = fixture::lastSight().clock; });
    group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
    EXPECT_EQ(15, first->position());
    EXPECT_EQ(0, clock) << "the last member's own";
}

TEST_F(InstanceGroupTest, EachMemberHasItsMeters) {
    const auto loud = makeMono();
    const auto quiet = makeMono();
    InstanceGroup group({loud.get(), quiet.get()});
    Audio audio[] = {Audio(10, 0.75F), Audio(20, 0.25F)};
    group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
    EXPECT_EQ(0.75F, loud->meters().value(0));
    EXPECT_EQ(0.25F, quiet->meters().value(0));
    audio[0].samples.assign(10, 0.0F);
    audio[1].samples.assign(20, 0.0F);
    group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
    const auto alone = makeMono();
    Audio again(20, 0.25F);
    alone->process(&again.input, &again.output, 20);
    again.samples.assign(20, 0.0F);
    alone->process(&again.input, &again.output, 20);
    EXPECT_EQ(alone->meters().value(0), quiet->meters().value(0)) << "falls by the time of its own buffer";
    EXPECT_LT(quiet->meters().value(0), 0.25F);
}

TEST_F(InstanceGroupTest, BuffersOfMoreThanTheMaximumAreDivided) {
    const auto small = makeMono(64);
    const auto alike = makeMono(64);
    const auto large = makeMono(100);
    InstanceGroup group({small.get(), alike.get(), large.get()});
    std::vector<std::int32_t> lastFrames;
    fixture::setHook([&] { lastFrames.push_back(fixture::lastSight().frames); });
    Audio audio[] = {Audio(150), Audio(150), Audio(150)};
    group.process(std::vector{audio[0].buffer(), audio[1].buffer(), audio[2].buffer()});
    EXPECT_THAT(lastFrames, ElementsAre(64, 64, 22, 100, 50)) << "those of equal division together";
    for (const auto& member : {small.get(), alike.get(), large.get()}) {
        EXPECT_EQ(150, framesOf(*member));
    }
    for (const Audio& each : audio) {
        EXPECT_EQ(std::vector<float>(150, each.samples.front()), each.samples);
        EXPECT_NE(1.0F, each.samples.front());
    }
}

TEST_F(InstanceGroupTest, OneMemberFeedsTheNextHoweverTheyAreDivided) {
    for (const std::int32_t secondMaximum : {8, 16, 64}) {
        const auto first = makeMono(16);
        const auto second = makeMono(secondMaximum);
        first->setNormalized("Gain", kQuarter);
        second->setNormalized("Gain", kQuarter);
        InstanceGroup group({first.get(), second.get()});
        Audio audio[] = {Audio(40), Audio(40)};
        audio[1].input = audio[0].output;
        group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
        const float once = audio[0].samples.front();
        EXPECT_THAT(audio[1].samples, testing::Each(once * once)) << secondMaximum;
    }
}

TEST_F(InstanceGroupTest, AMemberThatIsProcessingIsLeftOut) {
    const auto busy = makeMono();
    const auto idle = makeMono();
    InstanceGroup group({busy.get(), idle.get()});
    Audio audio[] = {Audio(10), Audio(10), Audio(10)};
    bool isInner = false;
    fixture::setHook([&] {
        if (!std::exchange(isInner, true)) {
            group.process(std::vector{audio[0].buffer(), audio[1].buffer()});
        }
    });
    busy->process(&audio[2].input, &audio[2].output, 10);
    EXPECT_THAT(takeViolations(), ElementsAre("thread: two threads process one instance at once"));
    EXPECT_THAT(audio[0].samples, testing::Each(1.0F));
    EXPECT_NE(1.0F, audio[1].samples.front());
    EXPECT_EQ(10, busy->position());
    EXPECT_EQ(10, idle->position());
}

TEST_F(InstanceGroupTest, MembersAreDifferentInstancesOfOneVariant) {
    const auto mono = makeMono();
    const auto stereo = makeInstance({.channels = 2});
    EXPECT_EQ("found a group without an instance", hostErrorOf([] { InstanceGroup({}); }));
    EXPECT_EQ("found an instance twice in a group", hostErrorOf([&] {
                  InstanceGroup({mono.get(), mono.get()});
              }));
    EXPECT_EQ("found instances of different variants in a group", hostErrorOf([&] {
                  InstanceGroup({mono.get(), stereo.get()});
              }));
}

} // namespace
} // namespace varno
