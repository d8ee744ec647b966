#include "Edit/EditSound.h"
#include "Tests/Apps/varno/Session/FakeBackend.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Support/Eventually.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

class EditSoundTest : public FixtureTest {
protected:
    // The fixture's effect halves the loop.
    void open(Instance& instance) {
        auto backend = std::make_unique<FakeBackend>(LiveRequest{.inputs = 0});
        mBackend = backend.get();
        mEffect.emplace(instance, OversamplingSetup{.routineLatencyFrames = 1});
        mSound.emplace(*mEffect, AudioLoop({{2, 4, 6}, {-2, -4, -6}}), std::move(backend));
    }
    // Before the instance ends, which a test holds.
    void close() {
        mSound.reset();
        mEffect.reset();
    }
    std::string toldAtCheck() {
        CaptureStderr();
        mSound->check();
        return GetCapturedStderr();
    }
    void expectToGoOn(const Instance& instance) {
        const auto before = instance.position();
        EXPECT_TRUE(eventually([&] { return instance.position() > before; }));
        EXPECT_EQ(toldAtCheck(), "");
        close();
    }

    FakeBackend* mBackend = nullptr; // destroyed together with mSound
    std::optional<Oversampling> mEffect;
    std::optional<EditSound> mSound;
};

TEST_F(EditSoundTest, TheSoundSystemReceivesTheProcessedLoop) {
    const auto instance = makeInstance();
    open(*instance);
    std::vector<float> left(4);
    std::vector<float> right(4);
    float* outputs[] = {left.data(), right.data()};
    mBackend->run(nullptr, outputs, 4);
    EXPECT_THAT(left, ElementsAre(1, 2, 3, 1));
    EXPECT_THAT(right, ElementsAre(-1, -2, -3, -1));
    EXPECT_EQ(toldAtCheck(), "");
    close();
}

TEST_F(EditSoundTest, BypassedItPlaysTheLoopOneFrameLater) {
    const auto instance = makeInstance();
    open(*instance);
    EXPECT_FALSE(mSound->isBypassed());
    mSound->setBypassed(true);
    EXPECT_TRUE(mSound->isBypassed());
    std::vector<float> left(4);
    std::vector<float> right(4);
    float* outputs[] = {left.data(), right.data()};
    mBackend->run(nullptr, outputs, 4);
    EXPECT_THAT(left, ElementsAre(0, 2, 4, 6));
    EXPECT_THAT(right, ElementsAre(0, -2, -4, -6));
    mSound->setBypassed(false);
    std::vector<float> faded(600);
    float* further[] = {faded.data(), faded.data()};
    mBackend->run(nullptr, further, 600);
    mBackend->run(nullptr, outputs, 4);
    EXPECT_THAT(left, ElementsAre(2, 3, 1, 2)) << "604 frames into the loop, processed again";
    close();
}

// The bar's one message grows; lines of the terminal, which stay, are two at most.
TEST_F(EditSoundTest, OverrunsAreCounted) {
    const auto instance = makeInstance();
    open(*instance);
    mBackend->changeableStatus().countOverrun();
    EXPECT_EQ(toldAtCheck(), "varno: warning: 1 overrun so far: the sound was interrupted\n");
    EXPECT_EQ(toldAtCheck(), "");
    for (const char* const shown : {"2 overruns", "3 overruns"}) {
        mBackend->changeableStatus().countOverrun();
        CaptureStderr();
        EXPECT_EQ(mSound->check(), std::string(shown) + " so far: the sound was interrupted");
        EXPECT_EQ(mSound->check(), std::nullopt);
        EXPECT_EQ(GetCapturedStderr(), "");
    }
    CaptureStderr();
    close();
    EXPECT_EQ(GetCapturedStderr(), "varno: warning: 3 overruns in all\n");
}

TEST_F(EditSoundTest, ALostSoundSystemIsReportedOnceAfterItsOverruns) {
    const auto instance = makeInstance();
    open(*instance);
    for (int i = 0; i < 2; ++i) {
        mBackend->changeableStatus().countOverrun();
    }
    mBackend->changeableStatus().end("unplugged");
    CaptureStderr();
    const auto shown = mSound->check();
    const std::string lost =
        "Fake client varno: the sound system has ended (unplugged); the file is no longer played";
    EXPECT_EQ(shown, lost);
    EXPECT_EQ(GetCapturedStderr(), "varno: warning: 2 overruns so far: the sound was interrupted\n"
                                   "varno: warning: " +
                                       lost + "\n");
    EXPECT_EQ(toldAtCheck(), "");
    CaptureStderr();
    close();
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST_F(EditSoundTest, GoesOnByTheClockWhereTheSoundSystemEnds) {
    const auto instance = makeInstance();
    open(*instance);
    mBackend->changeableStatus().end("unplugged");
    EXPECT_EQ(toldAtCheck(),
              "varno: warning: Fake client varno: the sound system has ended (unplugged); the file is "
              "no longer played\n");
    expectToGoOn(*instance);
}

TEST_F(EditSoundTest, AndWhereItsRateChanges) {
    const auto instance = makeInstance();
    open(*instance);
    mBackend->changeableStatus().setRate(96'000.0);
    EXPECT_EQ(toldAtCheck(),
              "varno: warning: Fake client varno: the sample rate has changed; the file is no longer "
              "played\n");
    expectToGoOn(*instance);
}

TEST_F(EditSoundTest, WithoutASoundSystemItGoesByTheClock) {
    const auto instance = makeInstance();
    mEffect.emplace(*instance, OversamplingSetup{});
    mSound.emplace(*mEffect, AudioLoop::silence(2), nullptr);
    expectToGoOn(*instance);
}

} // namespace
} // namespace varno::test
