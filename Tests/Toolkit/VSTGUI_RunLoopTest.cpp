#include "Toolkit/VSTGUI_RunLoop.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace varno::test {
namespace {

struct Event : VSTGUI::X11::IEventHandler {
    void onEvent() override { ++count; }
    int count = 0;
};

struct Timer : VSTGUI::X11::ITimerHandler {
    void onTimer() override {
        ++count;
        if (loop != nullptr) {
            loop->unregisterTimer(this);
        }
    }
    int count = 0;
    VSTGUI_RunLoop* loop = nullptr; // Where it takes itself out at the first call.
};

class VSTGUI_RunLoopTest : public ::testing::Test {
protected:
    RunLoop::TimePoint now;
    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>([this] { return now; });
    VSTGUI::SharedPointer<VSTGUI_RunLoop> adapter = VSTGUI::makeOwned<VSTGUI_RunLoop>(loop);
};

TEST_F(VSTGUI_RunLoopTest, CallsEventHandlersOnEveryTick) {
    std::set<int> watched;
    const Registration watcher = loop->addWatcher({[&](int descriptor) { watched.insert(descriptor); },
                                                   [&](int descriptor) { watched.erase(descriptor); }});
    Event event;
    EXPECT_TRUE(adapter->registerEventHandler(33, &event));
    EXPECT_EQ(watched, std::set<int>{33});
    loop->tick();
    loop->tick();
    EXPECT_EQ(event.count, 2);
    EXPECT_TRUE(adapter->unregisterEventHandler(&event));
    EXPECT_FALSE(adapter->unregisterEventHandler(&event));
    EXPECT_TRUE(watched.empty());
    loop->tick();
    EXPECT_EQ(event.count, 2);
}

TEST_F(VSTGUI_RunLoopTest, CallsTimersInTheirPeriod) {
    Timer timer;
    EXPECT_TRUE(adapter->registerTimer(17, &timer));
    loop->tick();
    EXPECT_EQ(timer.count, 0);
    now += std::chrono::milliseconds(17);
    loop->tick();
    EXPECT_EQ(timer.count, 1);
    EXPECT_TRUE(adapter->unregisterTimer(&timer));
    EXPECT_FALSE(adapter->unregisterTimer(&timer));
    now += std::chrono::milliseconds(17);
    loop->tick();
    EXPECT_EQ(timer.count, 1);
}

TEST_F(VSTGUI_RunLoopTest, DrawsInTheTickOfTheEvent) {
    struct Input : VSTGUI::X11::IEventHandler {
        void onEvent() override { drawnBefore.push_back(timer->count); }
        const Timer* timer = nullptr;
        std::vector<int> drawnBefore;
    };
    Timer drawing;
    Input input;
    input.timer = &drawing;
    adapter->registerTimer(16, &drawing);
    adapter->registerEventHandler(33, &input);
    loop->tick();
    loop->tick();
    EXPECT_EQ(input.drawnBefore, (std::vector{0, 1}));
    EXPECT_EQ(drawing.count, 2);
}

TEST_F(VSTGUI_RunLoopTest, ATimerMayTakeItselfOut) {
    Timer timer;
    timer.loop = adapter;
    adapter->registerTimer(1, &timer);
    for (int i = 0; i < 3; ++i) {
        now += std::chrono::milliseconds(1);
        loop->tick();
    }
    EXPECT_EQ(timer.count, 1);
}

TEST_F(VSTGUI_RunLoopTest, WhatIsLeftGoesWithIt) {
    Event event;
    adapter->registerEventHandler(33, &event);
    adapter = nullptr;
    loop->tick();
    EXPECT_EQ(event.count, 0);
}

} // namespace
} // namespace varno::test
