// The versions of the routine, and which one is chosen.
#include "Alg/DemoGain_Routine.h"

#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace varno::test::routine {

namespace {

// Requests a version by its name while it exists.
class Wish {
public:
    explicit Wish(const char* name)
        : mVariable("VARNO_SIMD", name) {}

private:
    EnvironmentVariable mVariable;
};

const SDemoGain_Routine& fastest() {
    for (const SDemoGain_Routine& routine : DemoGain_Routines()) {
        if (DemoGain_CanRun(routine)) {
            return routine;
        }
    }
    throw std::logic_error("no version runs here");
}

TEST(DemoGain_Routine, TheLastVersionRunsEverywhere) {
#if defined(__aarch64__)
    EXPECT_STREQ(DemoGain_Routines().back().mName, "neon");
#else
    EXPECT_STREQ(DemoGain_Routines().back().mName, "emulated");
#endif
    EXPECT_TRUE(DemoGain_CanRun(DemoGain_Routines().back()));
}

TEST(DemoGain_Routine, AWishIsFulfilledWhereTheProcessorCan) {
    for (const SDemoGain_Routine& routine : DemoGain_Routines()) {
        const Wish wish(routine.mName);
        if (DemoGain_CanRun(routine)) {
            EXPECT_EQ(&DemoGain_ChooseRoutine(), &routine) << routine.mName;
        } else {
            std::cout << "skipped: " << routine.mName << ": this processor cannot run it\n";
            EXPECT_EQ(&DemoGain_ChooseRoutine(), &fastest());
        }
    }
}

TEST(DemoGain_Routine, OtherWishesLeaveTheFastestVersion) {
    for (const char* const name : {"", "AVX2", "fastest"}) {
        const Wish wish(name);
        EXPECT_EQ(&DemoGain_ChooseRoutine(), &fastest()) << name;
    }
}

TEST(DemoGain_Routine, TheEffectRunsTheVersionChosenAtItsStart) {
    for (const std::size_t channels : {1U, 2U}) {
        const Signal input = drums(channels, 1000, 48000.0, 3);
        AlgInstance expected(channels, 48000.0);
        AlgInstance found(channels, 48000.0);
        const auto processor = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            found.attach(inputs, outputs, frames);
            SDemoGain_Alg_Context* const instances[] = {&found.context()};
            if (channels == 1) {
                DemoGain_AlgorithmProcessFunction<1, 1>(instances, instances + 1);
            } else {
                DemoGain_AlgorithmProcessFunction<2, 2>(instances, instances + 1);
            }
        };
        const RenderOutcome wanted = renderChecked(expected.processor(), input);
        const RenderOutcome outcome = renderChecked(processor, input);
        EXPECT_EQ(firstDifference(wanted.output, outcome.output), "");
        EXPECT_EQ(firstDifference(expected, found), "");
    }
}

} // namespace
} // namespace varno::test::routine
