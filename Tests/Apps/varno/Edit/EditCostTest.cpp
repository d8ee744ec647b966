#include "Surround/FaceLayout.h"
#include "Tests/Apps/varno/Support/EffectWindowTest.h"
#include "Tests/Support/TestRun.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>

// What the window costs beside the sound, which the program processes on a thread of its own.

namespace varno::test {
namespace {

class EditCost : public EffectWindowTest {
protected:
    using Clock = std::chrono::steady_clock;

    // Sanitizers slow the program down.
    static constexpr double kSlowness = kIsSanitized ? 5.0 : 1.0;

    // Processor time of the window's thread, and bytes that the program has written, all of them to the
    // server.
    struct Use {
        double seconds = 0.0;
        double bytes = 0.0;
    };

    // A tone whose level rises and falls.
    void makeTone(const std::string& name) const {
        Sound sound;
        sound.format = kWavFloat;
        sound.channels = 2;
        for (int i = 0; i < 2 * sound.rateHz; ++i) {
            const double time = static_cast<double>(i) / sound.rateHz;
            const double level = 0.1 + 0.8 * std::fabs(std::sin(std::numbers::pi * time));
            const double sample = level * std::sin(2.0 * std::numbers::pi * 440.0 * time);
            sound.reals.insert(sound.reals.end(), {sample, sample});
        }
        writeSound(path(name), sound);
    }

    static Use used(const Subprocess& program) {
        const std::string process = "/proc/" + std::to_string(program.pid());
        Use use;
        std::ifstream(process + "/task/" + std::to_string(program.pid()) + "/schedstat") >> use.seconds;
        use.seconds *= 1e-9;
        std::ifstream counts(process + "/io");
        for (std::string name; counts >> name >> use.bytes && name != "wchar:";) {
        }
        return use;
    }
    // In one second, on average.
    static Use usedFor(const Subprocess& program, std::chrono::duration<double> time) {
        const Use before = used(program);
        const auto start = Clock::now();
        std::this_thread::sleep_for(time);
        const Use after = used(program);
        const std::chrono::duration<double> passed = Clock::now() - start;
        return {(after.seconds - before.seconds) / passed.count(),
                (after.bytes - before.bytes) / passed.count()};
    }
};

TEST_F(EditCost, NothingIsDrawnWhenNothingMoves) {
    const auto program = editEffect({"--sound", "off"});
    // Where the pointer is and who has the focus is asked 30 times a second; no drawing has less than 300
    // bytes.
    constexpr double kQuestions = 30 * 40;
    double bytes = 0.0;
    EXPECT_TRUE(eventually([&] {
        bytes = usedFor(*program, std::chrono::seconds(1)).bytes;
        return bytes < kQuestions;
    })) << bytes;
    EXPECT_GT(bytes, 0.0);
}

TEST_F(EditCost, MovingMetersCostLittle) {
    makeTone("tone.wav");
    const auto program = editEffect({"--sound", "off", "tone.wav"});
    const Use use = usedFor(*program, std::chrono::seconds(2));
    RecordProperty("per cent of a core", std::to_string(100.0 * use.seconds));
    // Twice what it may be on a machine without other load, a fiftieth of a core.
    EXPECT_LT(use.seconds, 2.0 * 0.02 * kSlowness);
    EXPECT_GT(use.seconds, 0.0);
    // The parts that move, as commands: the pixels of one meter alone would be more.
    EXPECT_LT(use.bytes, 60'000.0);
    EXPECT_GT(use.bytes, 5'000.0);
}

TEST_F(EditCost, AStepOfADragIsSeenAtOnce) {
    constexpr int kSteps = 50;
    constexpr int kPixels = 6; // more than one picture of the knob
    constexpr int kWay = 10;   // steps, within the knob's range of 100 pixels in each direction
    const auto program = editEffect({"--sound", "off"});
    const Box box = FaceLayout::boxOf(*FaceLayout::controlOf("Gain"));
    const Area knob = {box.x, BarLayout::kHeight + box.y, box.width, box.height};
    const Place start = knob.middle();
    mPointer.move(start);
    mPointer.press();
    std::vector<double> delays;
    Picture shown = picture(knob);
    for (int step = 0; step < kSteps; ++step) {
        const int height = kPixels * (kWay - std::abs(step % (2 * kWay) - kWay + 1));
        const auto moved = Clock::now();
        mPointer.move({start.x, start.y - height});
        Picture now;
        ASSERT_TRUE(eventually([&] {
            now = picture(knob);
            return now != shown;
        })) << step;
        delays.push_back(std::chrono::duration<double, std::milli>(Clock::now() - moved).count());
        shown = now;
    }
    mPointer.release();
    std::ranges::nth_element(delays, delays.begin() + kSteps / 2);
    RecordProperty("median milliseconds", std::to_string(delays.at(kSteps / 2)));
    EXPECT_LT(delays.at(kSteps / 2), 20.0 * kSlowness);
}

} // namespace
} // namespace varno::test
