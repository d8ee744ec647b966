#include "Tests/Libs/AAXLibrary/DispatcherFixture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace varno::test {
namespace {

constexpr int kRounds = 2000;

TEST(PacketDispatcherThreaded, LosesNoMarkBetweenThreads) {
    // Each thread raises a value and marks its parameter; another dispatches continuously. In any order, the
    // last value of each is posted in the end.
    constexpr int kWriters = 3;
    DispatcherFixture fixture;
    AAX_CPacketDispatcher& dispatcher = fixture.dispatcher;
    std::atomic<std::int32_t> values[kWriters] = {};
    const char* const names[kWriters] = {"A", "B", "C"};
    for (int i = 0; i < kWriters; ++i) {
        fixture.registerFunction(names[i], i, [&value = values[i]](AAX_CParamID, AAX_CPacket& packet) {
            *packet.GetPtr<std::int32_t>() = value.load();
            return AAX_SUCCESS;
        });
    }
    std::atomic<int> writing{kWriters};
    std::vector<std::thread> threads;
    for (int i = 0; i < kWriters; ++i) {
        threads.emplace_back([&, i] {
            for (std::int32_t round = 1; round <= kRounds; ++round) {
                values[i] = round;
                dispatcher.SetDirty(names[i], true);
            }
            --writing;
        });
    }
    while (writing > 0) {
        dispatcher.Dispatch();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    dispatcher.Dispatch();
    for (int i = 0; i < kWriters; ++i) {
        EXPECT_EQ(fixture.host.controller.latest(i).as<std::int32_t>(), kRounds);
    }
}

TEST(PacketDispatcherThreaded, RegistersMarksAndDispatchesSideBySide) {
    DispatcherFixture fixture;
    AAX_CPacketDispatcher& dispatcher = fixture.dispatcher;
    constexpr int kFields = 200;
    std::thread registering([&] {
        for (int field = 0; field < kFields; ++field) {
            fixture.registerValue(std::to_string(field).c_str(), field, field);
        }
    });
    std::thread marking([&] {
        for (int i = 0; i < kRounds; ++i) {
            dispatcher.SetDirty(std::to_string(i % kFields).c_str(), true);
        }
    });
    for (int i = 0; i < kRounds; ++i) {
        dispatcher.Dispatch();
    }
    registering.join();
    marking.join();
    dispatcher.Dispatch();
    for (int field = 0; field < kFields; ++field) {
        EXPECT_EQ(fixture.host.controller.latest(field).as<std::int32_t>(), field);
    }
}

TEST(PacketDispatcherThreaded, KeepsOtherThreadsOutWhileAHandlerCallsBack) {
    // A nested call from the handler's own thread must not release the lock to others.
    DispatcherFixture fixture;
    AAX_CPacketDispatcher& dispatcher = fixture.dispatcher;
    int unguarded = 0; // written by the thread that holds the lock
    const auto count = [&](AAX_CParamID, AAX_CPacket& packet) {
        ++unguarded;
        dispatcher.SetDirty("Other", true);
        ++unguarded;
        *packet.GetPtr<std::int32_t>() = unguarded;
        return AAX_SUCCESS;
    };
    fixture.registerFunction("Gain", 0, count);
    const auto run = [&] {
        for (int i = 0; i < kRounds; ++i) {
            dispatcher.SetDirty("Gain", true);
            dispatcher.Dispatch();
        }
    };
    std::thread other(run);
    run();
    other.join();
    dispatcher.SetDirty("Gain", true);
    const int before = unguarded;
    EXPECT_EQ(dispatcher.Dispatch(), AAX_SUCCESS);
    EXPECT_EQ(unguarded, before + 2);
    EXPECT_EQ(fixture.host.controller.posts.back().as<std::int32_t>(), unguarded);
}

} // namespace
} // namespace varno::test
