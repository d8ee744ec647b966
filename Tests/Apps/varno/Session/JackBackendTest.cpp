#include "Session/JackBackend.h"
#include "Tests/Apps/varno/Session/FakeJack.h"

#include <gmock/gmock.h>
#include <pthread.h>
#include <semaphore.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(JackPorts, NamesAreFixed) {
    EXPECT_EQ(portName(PortDirection::kInput, 1, 0), "in");
    EXPECT_EQ(portName(PortDirection::kOutput, 1, 0), "out");
    EXPECT_EQ(portName(PortDirection::kInput, 2, 0), "in_l");
    EXPECT_EQ(portName(PortDirection::kInput, 2, 1), "in_r");
    EXPECT_EQ(portName(PortDirection::kOutput, 2, 0), "out_l");
    EXPECT_EQ(portName(PortDirection::kOutput, 2, 1), "out_r");
}

TEST(JackPorts, EachInputReceivesOneCapture) {
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 8), ElementsAre(Pair(0, 0), Pair(1, 1)));
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 1), ElementsAre(Pair(0, 0), Pair(1, 0)));
    EXPECT_THAT(portPairs(PortDirection::kInput, 1, 2), ElementsAre(Pair(0, 0)));
}

TEST(JackPorts, OutputsGoToBothSides) {
    EXPECT_THAT(portPairs(PortDirection::kOutput, 2, 8), ElementsAre(Pair(0, 0), Pair(1, 1)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 2, 1), ElementsAre(Pair(0, 0), Pair(1, 0)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 1, 8), ElementsAre(Pair(0, 0), Pair(0, 1)));
    EXPECT_THAT(portPairs(PortDirection::kOutput, 1, 1), ElementsAre(Pair(0, 0)));
}

TEST(JackPorts, WithoutPortsThereIsNothingToConnect) {
    EXPECT_THAT(portPairs(PortDirection::kInput, 2, 0), IsEmpty());
    EXPECT_THAT(portPairs(PortDirection::kInput, 0, 2), IsEmpty());
}

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr auto kDouble = [](const float* const* inputs, float* const* outputs, int frames) {
    for (int frame = 0; frame < frames; ++frame) {
        outputs[0][frame] = 2.0F * inputs[0][frame];
        outputs[1][frame] = 2.0F * inputs[1][frame];
    }
};
constexpr auto kNothing = [](const float* const*, float* const*, int) {};

class JackBackendTest : public testing::Test {
protected:
    static std::string refusal(const LiveRequest& request = {}) {
        try {
            JackBackend(FakeJack::functions(), request).start(kNothing);
        } catch (const SoundUnavailable& error) {
            return error.what();
        }
        return "";
    }
    std::vector<std::string> portNames() const {
        std::vector<std::string> names;
        for (const auto& port : mJack.ports) {
            names.push_back(port->name);
        }
        return names;
    }

    FakeJack mJack;
};

TEST_F(JackBackendTest, IsAClientWithFixedPorts) {
    {
        JackBackend backend(FakeJack::functions(), {});
        EXPECT_EQ(backend.description(), "JACK client varno");
        EXPECT_EQ(backend.status().rateHz(), 44'100.0);
        EXPECT_EQ(backend.status().blockFrames(), 128);
        EXPECT_THAT(portNames(), ElementsAre("varno:in_l", "varno:in_r", "varno:out_l", "varno:out_r"));
        EXPECT_EQ(mJack.port("varno:in_l").flags, static_cast<unsigned long>(JackPortIsInput));
        EXPECT_EQ(mJack.port("varno:out_r").flags, static_cast<unsigned long>(JackPortIsOutput));
        EXPECT_EQ(mJack.options, JackNoStartServer);
        EXPECT_FALSE(mJack.isActive);
        EXPECT_FALSE(mJack.isClosed);
    }
    EXPECT_TRUE(mJack.isClosed);
}

TEST_F(JackBackendTest, OneChannelHasNoSides) {
    const JackBackend backend(FakeJack::functions(), {.name = "drive", .inputs = 1, .outputs = 1});
    EXPECT_THAT(portNames(), ElementsAre("drive:in", "drive:out"));
}

TEST_F(JackBackendTest, ProcessesWhatThePortsHold) {
    JackBackend backend(FakeJack::functions(), {});
    backend.start(kDouble);
    mJack.port("varno:in_l").samples = {1, 2, 3};
    mJack.port("varno:in_r").samples = {4, 5, 6};
    EXPECT_EQ(mJack.process(3, mJack.self), 0);
    EXPECT_THAT(mJack.port("varno:out_l").samples, ElementsAre(2, 4, 6));
    EXPECT_THAT(mJack.port("varno:out_r").samples, ElementsAre(8, 10, 12));
}

TEST_F(JackBackendTest, ConnectsOnRequest) {
    JackBackend(FakeJack::functions(), {.shallConnect = false}).start(kNothing);
    EXPECT_THAT(mJack.connections, IsEmpty());
    JackBackend(FakeJack::functions(), {}).start(kNothing);
    EXPECT_THAT(mJack.connections,
                ElementsAre(Pair("system:capture_1", "varno:in_l"), Pair("system:capture_2", "varno:in_r"),
                            Pair("varno:out_l", "system:playback_1"),
                            Pair("varno:out_r", "system:playback_2")));
}

TEST_F(JackBackendTest, ASystemWithoutPortsIsNoFault) {
    mJack.captures.clear();
    mJack.playbacks.clear();
    EXPECT_EQ(refusal(), "");
    EXPECT_THAT(mJack.connections, IsEmpty());
}

TEST_F(JackBackendTest, ReportsALatencyOfOneFrameMore) {
    const JackBackend backend(FakeJack::functions(), {});
    mJack.port("varno:in_l").capture = {64, 128};
    mJack.port("varno:in_r").capture = {32, 100};
    mJack.port("varno:out_l").playback = {256, 512};
    mJack.port("varno:out_r").playback = {256, 600};
    mJack.latency(JackCaptureLatency, mJack.self);
    mJack.latency(JackPlaybackLatency, mJack.self);
    for (const char* name : {"varno:out_l", "varno:out_r"}) {
        EXPECT_EQ(mJack.port(name).capture.min, 33U);
        EXPECT_EQ(mJack.port(name).capture.max, 129U);
    }
    for (const char* name : {"varno:in_l", "varno:in_r"}) {
        EXPECT_EQ(mJack.port(name).playback.min, 257U);
        EXPECT_EQ(mJack.port(name).playback.max, 601U);
    }
}

TEST_F(JackBackendTest, AClientWithoutInputsReportsItsOwnLatency) {
    const JackBackend backend(FakeJack::functions(), {.inputs = 0});
    mJack.latency(JackCaptureLatency, mJack.self);
    EXPECT_EQ(mJack.port("varno:out_l").capture.min, 1U);
    EXPECT_EQ(mJack.port("varno:out_l").capture.max, 1U);
}

TEST_F(JackBackendTest, ReportsALatencyThatChanges) {
    JackBackend backend(FakeJack::functions(), {.inputs = 0});
    backend.setLatency(41);
    EXPECT_EQ(mJack.port("varno:out_l").capture.min, 0U); // the server asks once it is started
    mJack.latency(JackCaptureLatency, mJack.self);
    EXPECT_EQ(mJack.port("varno:out_l").capture.min, 41U);
    backend.start({});
    backend.setLatency(46);
    EXPECT_EQ(mJack.port("varno:out_l").capture.min, 46U);
    mJack.port("varno:out_l").capture = {};
    backend.setLatency(46);
    EXPECT_EQ(mJack.port("varno:out_l").capture.min, 0U); // not asked for again
}

TEST_F(JackBackendTest, ReportsWhatTheServerDoes) {
    const JackBackend backend(FakeJack::functions(), {});
    mJack.bufferSize(512, mJack.self);
    mJack.sampleRate(96'000, mJack.self);
    mJack.xrun(mJack.self);
    mJack.xrun(mJack.self);
    EXPECT_EQ(backend.status().blockFrames(), 512);
    EXPECT_EQ(backend.status().rateHz(), 96'000.0);
    EXPECT_EQ(backend.status().overruns(), 2);
    EXPECT_EQ(backend.status().ending(), std::nullopt);
    mJack.shutdown(JackServerError, "server went away", mJack.self);
    EXPECT_EQ(backend.status().ending(), "server went away");
}

TEST_F(JackBackendTest, ReportsWhatIsRefused) {
    mJack.refusal = static_cast<jack_status_t>(JackFailure | JackServerFailed);
    setenv("JACK_DEFAULT_SERVER", "", 1);
    EXPECT_EQ(refusal(), R"(no server "default" answers)");
    setenv("JACK_DEFAULT_SERVER", "studio", 1);
    EXPECT_EQ(refusal(), R"(no server "studio" answers)");
    mJack.refusal = JackFailure;
    EXPECT_EQ(refusal({.name = "drive"}), R"(the server "studio" refuses a client "drive")");
    unsetenv("JACK_DEFAULT_SERVER");
    mJack.refusal = {};
    EXPECT_FALSE(mJack.isClosed);
    mJack.refusesPorts = true;
    EXPECT_EQ(refusal(), R"(the server refuses a port "in_l")");
    EXPECT_TRUE(mJack.isClosed);
    mJack.refusesPorts = false;
    mJack.refusesToStart = true;
    EXPECT_EQ(refusal(), "the server does not start the client");
}

// As the library does when a client is closed: its thread may be cancelled at any instruction. Where a block
// is not done, the thread ends after it, not within.
TEST(JackThread, IsCancelledBetweenBlocks) {
    struct Block {
        FakeJack jack;
        sem_t began{};
        sem_t mayEnd{};
        bool hasEnded = false;
        bool hasGoneOn = false; // the thread, after it
    } block;
    ::sem_init(&block.began, 0, 0);
    ::sem_init(&block.mayEnd, 0, 0);
    JackBackend backend(FakeJack::functions(), {});
    backend.start([&block](const float* const*, float* const*, int) {
        ::sem_post(&block.began);
        ::sem_wait(&block.mayEnd); // where a thread may be cancelled
        block.hasEnded = true;
    });
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        auto& called = *static_cast<Block*>(argument);
        ::pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
        called.jack.process(called.jack.periodFrames, called.jack.self);
        called.hasGoneOn = true;
        return nullptr;
    };
    ASSERT_EQ(::pthread_create(&thread, nullptr, run, &block), 0);
    ::sem_wait(&block.began);
    ::pthread_cancel(thread);
    ::sem_post(&block.mayEnd);
    ::pthread_join(thread, nullptr);
    EXPECT_TRUE(block.hasEnded);
    EXPECT_FALSE(block.hasGoneOn);
}

} // namespace
} // namespace varno::test
