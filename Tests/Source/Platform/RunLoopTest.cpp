#include "Platform/RunLoop.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using varno::Registration;
using varno::RunLoop;

constexpr int kSomeDescriptor = 1000;

// Notes which handlers were called, in order.
class RunLoopTest : public testing::Test {
protected:
    RunLoop::Callback note(const std::string& name) {
        return [this, name] { called.push_back(name); };
    }

    std::vector<std::string> tick() {
        called.clear();
        loop->tick();
        return called;
    }

    void pass(std::chrono::milliseconds time) { now += time; }

    RunLoop::TimePoint now;
    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>([this] { return now; });
    std::vector<std::string> called;
};

TEST_F(RunLoopTest, CallsEveryDescriptorsHandlerOnEachTick) {
    const Registration first = loop->addDescriptor(kSomeDescriptor, note("first"));
    const Registration second = loop->addDescriptor(kSomeDescriptor + 1, note("second"));

    EXPECT_THAT(tick(), ElementsAre("first", "second"));
    EXPECT_THAT(tick(), ElementsAre("first", "second"));
}

TEST_F(RunLoopTest, DoesNotCallWhatWasRemoved) {
    Registration first = loop->addDescriptor(kSomeDescriptor, note("first"));
    const Registration second = loop->addDescriptor(kSomeDescriptor, note("second"));

    first.reset();

    EXPECT_THAT(tick(), ElementsAre("second"));
}

TEST_F(RunLoopTest, HandlerMayRemoveItselfAndGoOn) {
    Registration registration;
    registration = loop->addDescriptor(kSomeDescriptor, [&, text = std::string(100, 'x')] {
        registration.reset();
        called.push_back(text);
    });

    EXPECT_THAT(tick(), ElementsAre(std::string(100, 'x')));
    EXPECT_THAT(tick(), ElementsAre());
}

TEST_F(RunLoopTest, HandlerMayRemoveALaterOneThatIsThenNotCalled) {
    Registration second;
    const Registration first = loop->addDescriptor(kSomeDescriptor, [&] { second.reset(); });
    second = loop->addDescriptor(kSomeDescriptor, note("second"));
    const Registration third = loop->addDescriptor(kSomeDescriptor, note("third"));

    EXPECT_THAT(tick(), ElementsAre("third"));
}

TEST_F(RunLoopTest, HandlerMayRemoveAnEarlierOne) {
    Registration first = loop->addDescriptor(kSomeDescriptor, note("first"));
    const Registration second = loop->addDescriptor(kSomeDescriptor, [&] { first.reset(); });
    const Registration third = loop->addDescriptor(kSomeDescriptor, note("third"));

    EXPECT_THAT(tick(), ElementsAre("first", "third"));
    EXPECT_THAT(tick(), ElementsAre("third"));
}

TEST_F(RunLoopTest, HandlerMayAddOthersThatComeWithTheNextTick) {
    std::vector<Registration> added;
    Registration registration = loop->addDescriptor(kSomeDescriptor, [&] {
        for (int count = 0; count < 100; ++count) {
            added.push_back(loop->addDescriptor(kSomeDescriptor, note("added")));
        }
        added.push_back(loop->addTimer(0ms, note("timer")));
    });

    EXPECT_THAT(tick(), ElementsAre());
    registration.reset();
    std::vector<std::string> all(100, "added");
    all.emplace_back("timer");
    EXPECT_EQ(tick(), all);
}

TEST_F(RunLoopTest, HandlerMayRemoveADueTimer) {
    Registration timer = loop->addTimer(0ms, note("timer"));
    const Registration descriptor = loop->addDescriptor(kSomeDescriptor, [&] { timer.reset(); });

    EXPECT_THAT(tick(), ElementsAre());
}

TEST_F(RunLoopTest, TimerComesAfterEachPeriod) {
    const Registration timer = loop->addTimer(16ms, note("timer"));

    EXPECT_THAT(tick(), ElementsAre());
    pass(15ms);
    EXPECT_THAT(tick(), ElementsAre());
    pass(1ms);
    EXPECT_THAT(tick(), ElementsAre("timer"));
    EXPECT_THAT(tick(), ElementsAre());
    pass(16ms);
    EXPECT_THAT(tick(), ElementsAre("timer"));
}

TEST_F(RunLoopTest, TimerKeepsStepWithItsPeriodWhereTicksComeLate) {
    const Registration timer = loop->addTimer(16ms, note("timer"));

    int calls = 0;
    for (int ticks = 0; ticks < 160; ++ticks) {
        pass(10ms);
        calls += static_cast<int>(tick().size());
    }

    EXPECT_EQ(calls, 1600 / 16);
}

TEST_F(RunLoopTest, TimerComesOnceWhereSeveralPeriodsHavePassed) {
    const Registration timer = loop->addTimer(16ms, note("timer"));

    pass(1000ms);
    EXPECT_THAT(tick(), ElementsAre("timer"));
    pass(15ms);
    EXPECT_THAT(tick(), ElementsAre());
    pass(1ms);
    EXPECT_THAT(tick(), ElementsAre("timer"));
}

TEST_F(RunLoopTest, TimerWithoutAPeriodComesOnEveryTick) {
    const Registration timer = loop->addTimer(0ms, note("timer"));

    EXPECT_THAT(tick(), ElementsAre("timer"));
    EXPECT_THAT(tick(), ElementsAre("timer"));
}

TEST_F(RunLoopTest, TimerMayRemoveItselfAndALaterOne) {
    Registration first;
    Registration second;
    first = loop->addTimer(1ms, [&] {
        second.reset();
        first.reset();
        called.emplace_back("first");
    });
    second = loop->addTimer(1ms, note("second"));

    pass(1ms);
    EXPECT_THAT(tick(), ElementsAre("first"));
    pass(1ms);
    EXPECT_THAT(tick(), ElementsAre());
}

TEST_F(RunLoopTest, TickWithinATickDoesNothing) {
    const Registration first = loop->addDescriptor(kSomeDescriptor, [&] {
        called.emplace_back("first");
        loop->tick();
    });
    const Registration second = loop->addDescriptor(kSomeDescriptor, note("second"));

    EXPECT_THAT(tick(), ElementsAre("first", "second"));
    EXPECT_THAT(tick(), ElementsAre("first", "second"));
}

TEST_F(RunLoopTest, PassesOnWhatAHandlerThrowsAndTicksAgain) {
    Registration faulty = loop->addDescriptor(kSomeDescriptor, [] { throw std::runtime_error("fault"); });
    const Registration other = loop->addDescriptor(kSomeDescriptor, note("other"));

    EXPECT_THROW(loop->tick(), std::runtime_error);
    EXPECT_THROW(loop->tick(), std::runtime_error);
    faulty.reset();

    EXPECT_THAT(tick(), ElementsAre("other"));
}

TEST_F(RunLoopTest, HandlerMayEndTheLoopAndNothingMoreIsCalled) {
    const Registration first = loop->addDescriptor(kSomeDescriptor, [&] { loop.reset(); });
    const Registration second = loop->addDescriptor(kSomeDescriptor, note("second"));
    const Registration timer = loop->addTimer(0ms, note("timer"));

    EXPECT_THAT(tick(), ElementsAre());
    EXPECT_EQ(loop, nullptr);
}

TEST_F(RunLoopTest, RegistrationsMayOutliveTheLoop) {
    int removed = 0;
    Registration descriptor = loop->addDescriptor(kSomeDescriptor, note("descriptor"));
    Registration timer = loop->addTimer(1ms, note("timer"));
    Registration watcher = loop->addWatcher({[](int) {}, [&removed](int) { ++removed; }});

    loop.reset();
    descriptor.reset();
    timer.reset();
    watcher.reset();

    EXPECT_EQ(removed, 0);
}

TEST_F(RunLoopTest, ReleasesAHandlerWhenItIsRemoved) {
    const auto kept = std::make_shared<int>();
    Registration registration = loop->addDescriptor(kSomeDescriptor, [kept] {});
    EXPECT_EQ(kept.use_count(), 2);

    registration.reset();

    EXPECT_EQ(kept.use_count(), 1);
}

TEST(RunLoopShared, IsOneForAllWhoHoldIt) {
    const auto one = RunLoop::shared();

    EXPECT_EQ(RunLoop::shared(), one);
    EXPECT_EQ(one.use_count(), 1);
}

TEST(RunLoopShared, GoesWithTheLastAndComesAnew) {
    int calls = 0;
    auto one = RunLoop::shared();
    auto other = RunLoop::shared();
    const std::weak_ptr<RunLoop> known = one;
    const Registration registration = one->addDescriptor(kSomeDescriptor, [&calls] { ++calls; });

    one.reset();
    EXPECT_FALSE(known.expired());
    other.reset();
    EXPECT_TRUE(known.expired());

    RunLoop::shared()->tick();
    EXPECT_EQ(calls, 0);
}

TEST(RunLoopShared, GoesByTheSystemsSteadyClock) {
    const auto loop = RunLoop::shared();
    int calls = 0;
    const Registration soon = loop->addTimer(0ms, [&calls] { ++calls; });
    const Registration late = loop->addTimer(24h, [&calls] { calls += 1000; });

    loop->tick();

    EXPECT_EQ(calls, 1);
}

TEST_F(RunLoopTest, KeepsAnObjectUntilItsTickHasReturned) {
    const auto object = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = object;
    std::vector<std::string> seen;
    Registration first = loop->addTimer(0ms, [&, kept = object]() mutable {
        if (kept) {
            EXPECT_TRUE(loop->isTicking());
            loop->keepForTick(std::exchange(kept, nullptr));
        }
    });
    Registration second = loop->addTimer(0ms, [&] { EXPECT_EQ(watch.use_count(), 2); });
    loop->tick();
    EXPECT_EQ(watch.use_count(), 1) << "only this test's own is left";
    EXPECT_FALSE(loop->isTicking());
    loop->keepForTick(std::make_shared<int>(2)); // outside a tick nothing is kept
}

TEST_F(RunLoopTest, KeepsAnObjectEvenWhereItsTickEndsTheLoop) {
    auto object = std::make_shared<int>(1);
    const std::weak_ptr<int> watch = object;
    Registration first = loop->addTimer(0ms, [&] {
        loop->keepForTick(std::exchange(object, nullptr));
        loop.reset();
        EXPECT_EQ(watch.use_count(), 1);
    });
    loop->tick();
    EXPECT_TRUE(watch.expired());
}

// What is released at the end of a tick may release more.
TEST_F(RunLoopTest, WhatEndsWithATickMayKeepMore) {
    std::vector<std::string> ended;
    const auto endingWith = [](std::function<void()> end) {
        return std::shared_ptr<void>(nullptr, [end = std::move(end)](void*) { end(); });
    };
    Registration once = loop->addTimer(0ms, [&] {
        loop->keepForTick(endingWith([&] {
            ended.emplace_back("first");
            loop->keepForTick(endingWith([&] { ended.emplace_back("second"); }));
        }));
    });
    loop->tick();
    EXPECT_THAT(ended, ElementsAre("first", "second"));
}

} // namespace
