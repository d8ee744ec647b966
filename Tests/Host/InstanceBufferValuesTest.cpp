// Values that are passed with a buffer, on the audio thread.
#include "Host/InstanceHost.h"
#include "Tests/Host/FixtureTest.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace varno {
namespace {

class InstanceBufferValues : public FixtureTest {
protected:
    // The gain's index in parameters().
    static std::size_t gainOf(const Instance& instance) {
        return static_cast<std::size_t>(instance.parameter("Gain")->index);
    }

    // The instance's output for a sample of 1.
    static float processOne(Instance& instance) {
        const float input[] = {1.0F};
        float output[] = {0.0F, 0.0F};
        const float* inputs[] = {input, input};
        float* outputs[] = {output, output + 1};
        instance.process(inputs, outputs, 1);
        return output[0];
    }
};

TEST_F(InstanceBufferValues, AreInForceFromTheNextBufferOn) {
    const auto given = makeInstance();
    const auto automated = makeInstance();
    const BufferValue values[] = {{gainOf(*given), 0.25}};
    EXPECT_TRUE(given->setBeforeBuffer(values));
    automated->setNormalized("Gain", 0.25);
    EXPECT_EQ(given->normalized("Gain"), 0.25);
    EXPECT_EQ(processOne(*given), processOne(*automated));
}

TEST_F(InstanceBufferValues, BelongOnTheAudioThread) {
    const auto instance = makeInstance();
    const BufferValue values[] = {{gainOf(*instance), 0.25}};
    {
        const AudioThreadScope audio;
        EXPECT_TRUE(instance->setBeforeBuffer(values));
    }
    EXPECT_THAT(takeViolations(), IsEmpty());
}

TEST_F(InstanceBufferValues, ExcuseNoOtherCallOnTheAudioThread) {
    const auto instance = makeInstance();
    {
        const AudioThreadScope audio;
        instance->setBeforeBuffer({});
        instance->idle();
    }
    EXPECT_THAT(takeViolations(), ElementsAre("thread: Instance::idle on the audio thread"));
}

TEST_F(InstanceBufferValues, AreLimited) {
    const auto instance = makeInstance();
    const std::size_t gain = gainOf(*instance);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [given, expected] :
         {std::pair{1.5, 1.0}, {-0.5, 0.0}, {infinity, 1.0}, {-infinity, 0.0}}) {
        const BufferValue values[] = {{gain, given}};
        EXPECT_TRUE(instance->setBeforeBuffer(values));
        EXPECT_EQ(instance->normalized("Gain"), expected);
    }
    EXPECT_THAT(takeViolations(), IsEmpty());
}

TEST_F(InstanceBufferValues, AreLeftOutWhereTheyAreNone) {
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 0.75);
    const std::size_t gain = gainOf(*instance);
    const BufferValue values[] = {
        {gain, std::nan("")}, {1000, 0.5}, {std::numeric_limits<std::size_t>::max(), 0.5}};
    EXPECT_TRUE(instance->setBeforeBuffer(values));
    EXPECT_EQ(instance->normalized("Gain"), 0.75);
    EXPECT_THAT(takeViolations(), IsEmpty());
}

TEST_F(InstanceBufferValues, DoNotWaitForAnotherThread) {
    const auto instance = makeInstance();
    const BufferValue values[] = {{gainOf(*instance), 0.25}};
    const double before = instance->normalized("Gain");
    bool isGiven = true;
    {
        const MainGate::Scope busy(instance->host().state().gate, "test");
        std::thread([&] { isGiven = instance->setBeforeBuffer(values); }).join();
    }
    EXPECT_FALSE(isGiven);
    EXPECT_EQ(instance->normalized("Gain"), before);
    EXPECT_TRUE(instance->setBeforeBuffer(values));
    EXPECT_EQ(instance->normalized("Gain"), 0.25);
    EXPECT_THAT(takeViolations(), IsEmpty());
}

} // namespace
} // namespace varno
