// What editors leave behind when they are opened and closed many times.
#include "Tests/Integration/Editor/EditorTest.h"

#include "Tests/Support/ResidentGrowth.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"

namespace varno::test {
namespace {

// What an editor takes from the system and must release.
struct Holdings {
    std::ptrdiff_t descriptors = 0;
    std::map<std::string, std::uint32_t> resources;
    std::size_t watches = 0;
    std::size_t timers = 0;

    // Whether no count is higher than in the other.
    bool isWithin(const Holdings& other) const {
        return descriptors <= other.descriptors && watches <= other.watches && timers <= other.timers &&
               isNoMore(resources, other.resources);
    }
};

void PrintTo(const Holdings& holdings, std::ostream* out) {
    *out << holdings.descriptors << " descriptors, " << holdings.watches << " watches, " << holdings.timers
         << " timers, on the X server";
    for (const auto& [kind, count] : holdings.resources) {
        *out << " " << count << " " << kind;
    }
}

class OpenClose : public EditorTest {
protected:
    Holdings holdings() const {
        return {openDescriptors(), countResources(client), loop.countWatches(), loop.countTimers()};
    }
    // Waits, since the server notices that a client has disconnected some time later. So the count before may
    // include one that had disconnected: where the present count is lower, it is the one to compare with from
    // then on.
    ::testing::AssertionResult isBackAt(Holdings& before) {
        Holdings now;
        if (eventually([&] { return (now = holdings()).isWithin(before); })) {
            before = now;
            return ::testing::AssertionSuccess();
        }
        return ::testing::AssertionFailure() << "left over: " << ::testing::PrintToString(holdings())
                                             << "\nbefore:    " << ::testing::PrintToString(before);
    }

    // Something for the editor to do while it is open.
    void useFor(int turns, Instance& instance) {
        for (int i = 0; i < turns; ++i) {
            setMeter(instance, eMeterTap_GainReductionLeft, static_cast<float>(random() % 100) / 100.0F);
            instance.requestNormalized("Hot", static_cast<double>(random() % 100) / 100.0);
            loop.turn();
        }
        setMeter(instance, eMeterTap_GainReductionLeft, 0.0F);
    }

    // Memory may grow in the first rounds, until caches are full, but not afterwards.
    template<typename Round>
    void repeat(int rounds, Round round) {
        constexpr int kWarmUp = 10;
        constexpr std::ptrdiff_t kGrowth = 1 << 20;
        round(0);
        Holdings baseline = holdings();
        ResidentGrowth growth(kWarmUp, rounds);
        for (int i = 1; i < rounds; ++i) {
            round(i);
            ASSERT_TRUE(isBackAt(baseline)) << "round " << i;
            growth.after(i);
        }
        RecordProperty("growth_bytes", std::to_string(growth.bytes()));
        if (!kIsSanitized) { // sanitizers keep what was freed
            EXPECT_LT(growth.bytes(), kGrowth)
                << "bytes of memory more after " << rounds - kWarmUp << " rounds";
        }
    }

    std::mt19937 random{20260204};
};

TEST_F(OpenClose, leavesNothingBehind) {
    const auto instance = makeInstance(module());
    {
        const Holdings before = holdings();
        open(*instance)->close();
        EXPECT_EQ(holdings().watches, before.watches);
        EXPECT_EQ(holdings().timers, before.timers);
        EXPECT_TRUE(eventually([&] { return isNoMore(countResources(client), before.resources); }));
    }
    repeat(testScale() > 1 ? 500 : 40, [&](int) {
        const auto window = show(*instance);
        useFor(5, *instance);
    });
}

TEST_F(OpenClose, leavesNothingBehindOfTwoThatOverlap) {
    const auto one = makeInstance(module());
    const auto other = makeInstance(module());
    repeat(testScale() > 1 ? 200 : 20, [&](int round) {
        auto oneWindow = show(*one);
        auto otherWindow = show(*other, {0, viewArea().height});
        useFor(3, *one);
        (round % 2 == 0 ? oneWindow : otherWindow)->close();
        useFor(3, *other);
        if (round % 3 == 0) {
            (round % 2 == 0 ? oneWindow : otherWindow) = show(round % 2 == 0 ? *one : *other);
            useFor(3, *one);
        }
    });
}

TEST_F(OpenClose, leavesNothingBehindOfTheClipboard) {
    const auto instance = makeInstance(module());
    const Holdings before = holdings();
    repeat(20, [&](int) {
        const auto window = show(*instance);
        click(*window, "PR1K");
        click(*window, "PR2K");
    });
    EXPECT_TRUE(eventually([&] { return isNoMore(countResources(client), before.resources); }));
}

TEST_F(OpenClose, leavesNoObjectOfTheModulesAlive) {
    for (int i = 0; i < 5; ++i) {
        auto instance = makeInstance(module());
        show(*instance)->close();
        instance.reset();
        EXPECT_EQ(module()->liveObjects(), 0);
    }
}

} // namespace
} // namespace varno::test
