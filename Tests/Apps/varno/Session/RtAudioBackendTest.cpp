#include "Session/RtAudioBackend.h"
#include "Tests/Apps/varno/Session/FakeRtAudio.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;

class RtAudioBackendTest : public testing::Test {
protected:
    std::string refusal() const {
        try {
            RtAudioBackend(FakeRtAudio::functions(), {}).start([](const float* const*, float* const*, int) {
            });
        } catch (const SoundUnavailable& error) {
            EXPECT_EQ(mAudio.openInstances, 0);
            return error.what();
        }
        return "";
    }

    FakeRtAudio mAudio;
};

TEST_F(RtAudioBackendTest, AsksForWhatIsWantedAndTakesWhatThereIs) {
    {
        const RtAudioBackend backend(
            FakeRtAudio::functions(),
            {.name = "drive", .inputs = 1, .outputs = 2, .rateHz = 96'000.0, .blockFrames = 64});
        EXPECT_EQ(backend.description(), "RtAudio, PulseAudio");
        EXPECT_EQ(backend.status().rateHz(), 44'100.0);
        EXPECT_EQ(backend.status().blockFrames(), 300);
        EXPECT_EQ(mAudio.wantedRateHz, 96'000U);
        EXPECT_EQ(mAudio.wantedFrames, 64U);
        EXPECT_EQ(mAudio.input.device_id, 3U);
        EXPECT_EQ(mAudio.input.num_channels, 1U);
        EXPECT_EQ(mAudio.output.device_id, 4U);
        EXPECT_EQ(mAudio.output.num_channels, 2U);
        EXPECT_STREQ(mAudio.options.name, "drive");
    }
    EXPECT_EQ(mAudio.openInstances, 0);
}

TEST_F(RtAudioBackendTest, WithoutInputsThereIsNoInput) {
    const RtAudioBackend backend(FakeRtAudio::functions(), {.inputs = 0});
    EXPECT_FALSE(mAudio.hasInput);
}

TEST_F(RtAudioBackendTest, AlsaComesSecond) {
    mAudio.apisWithDevices = {RTAUDIO_API_LINUX_ALSA};
    EXPECT_EQ(RtAudioBackend(FakeRtAudio::functions(), {}).description(), "RtAudio, ALSA");
    EXPECT_EQ(mAudio.openInstances, 0);
}

TEST_F(RtAudioBackendTest, ProcessesChannelsThatLieOneBehindTheOther) {
    RtAudioBackend backend(FakeRtAudio::functions(), {});
    backend.start([](const float* const* inputs, float* const* outputs, int frames) {
        for (int frame = 0; frame < frames; ++frame) {
            outputs[0][frame] = inputs[1][frame];
            outputs[1][frame] = inputs[0][frame];
        }
    });
    std::vector<float> in = {1, 2, 3, 4, 5, 6};
    std::vector<float> out(in.size());
    EXPECT_EQ(mAudio.process(out.data(), in.data(), 3, 0.0, 0, mAudio.self), 0);
    EXPECT_THAT(out, ElementsAre(4, 5, 6, 1, 2, 3));
    EXPECT_EQ(backend.status().overruns(), 0);
    mAudio.process(out.data(), in.data(), 3, 0.0, RTAUDIO_STATUS_INPUT_OVERFLOW, mAudio.self);
    mAudio.process(out.data(), in.data(), 3, 0.0, RTAUDIO_STATUS_OUTPUT_UNDERFLOW, mAudio.self);
    EXPECT_EQ(backend.status().overruns(), 2);
}

// After a device was removed, the library requests blocks as fast as they are processed.
TEST_F(RtAudioBackendTest, ADeviceThatKeepsNoTimeHasGone) {
    constexpr unsigned kFrames = 1000;
    RtAudioBackend backend(FakeRtAudio::functions(), {});
    backend.start([](const float* const*, float* const*, int) {});
    std::vector<float> samples(std::size_t{2} * kFrames);
    const auto play = [&](int blocks) {
        for (int i = 0; i < blocks; ++i) {
            mAudio.process(samples.data(), samples.data(), kFrames, 0.0, 0, mAudio.self);
        }
        backend.check();
    };
    play(44); // a second of delayed blocks
    play(44);
    EXPECT_EQ(backend.status().ending(), std::nullopt);
    play(1'000'000);
    EXPECT_EQ(backend.status().ending(), "the device does not keep time any more");
}

TEST_F(RtAudioBackendTest, ReportsWhatIsRefused) {
    mAudio.apisWithDevices.clear();
    EXPECT_EQ(refusal(), "PulseAudio: no device, ALSA: no device");
    mAudio.unknownApis = {RTAUDIO_API_LINUX_PULSE};
    EXPECT_EQ(refusal(), "PulseAudio: not known to the library, ALSA: no device");
    mAudio.apisWithDevices = {RTAUDIO_API_LINUX_ALSA};
    mAudio.refusal = "in use";
    EXPECT_EQ(refusal(), "PulseAudio: not known to the library, ALSA: in use");
    mAudio.refusal = nullptr;
    mAudio.refusesToStart = true;
    EXPECT_EQ(refusal(), "ALSA does not start the stream");
}

// It states no times of its own. A block lasts a second, so that no machine is too slow for it.
TEST_F(RtAudioBackendTest, AnOverrunAfterABlockInTimeWasWokenLate) {
    BlockStatistics statistics;
    mAudio.blockFrames = mAudio.rateHz;
    RtAudioBackend backend(FakeRtAudio::functions(), {.statistics = &statistics});
    backend.start([](const float* const*, float* const*, int) {});
    std::vector<float> samples(2 * std::size_t{mAudio.blockFrames});
    for (const rtaudio_stream_status_t status :
         {0U, rtaudio_stream_status_t{RTAUDIO_STATUS_OUTPUT_UNDERFLOW}, 0U}) {
        mAudio.process(samples.data(), samples.data(), mAudio.blockFrames, 0.0, status, mAudio.self);
    }
    EXPECT_EQ(statistics.processing().count(), 3);
    EXPECT_EQ(statistics.waking().count(), 0);
    EXPECT_EQ(statistics.late(LateCause::kOurs), 0);
    EXPECT_EQ(statistics.late(LateCause::kWokenLate), 1);
    EXPECT_EQ(backend.status().overruns(), 1);
}

} // namespace
} // namespace varno::test
