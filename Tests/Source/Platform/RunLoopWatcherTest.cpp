#include "Platform/RunLoop.h"

#include <array>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/epoll.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using varno::Registration;
using varno::RunLoop;

void nothing() {
}

// Records what a watcher receives: 7 for a descriptor 7 that was added, -7 for one that was removed.
class Told {
public:
    RunLoop::Watcher watcher() {
        return {[this](int number) { mTold.push_back(number); },
                [this](int number) { mTold.push_back(-number); }};
    }

    std::vector<int> take() { return std::exchange(mTold, {}); }

private:
    std::vector<int> mTold;
};

TEST(RunLoopWatcher, ReceivesThoseThatExistAndLaterChanges) {
    RunLoop loop;
    Told told;
    Registration seven = loop.addDescriptor(7, nothing);

    const Registration watcher = loop.addWatcher(told.watcher());
    EXPECT_THAT(told.take(), ElementsAre(7));
    Registration nine = loop.addDescriptor(9, nothing);
    EXPECT_THAT(told.take(), ElementsAre(9));
    seven.reset();
    EXPECT_THAT(told.take(), ElementsAre(-7));
    nine.reset();
    EXPECT_THAT(told.take(), ElementsAre(-9));
}

TEST(RunLoopWatcher, ThatLeavesReceivesTheRemovalOfAllAndNothingMore) {
    RunLoop loop;
    Told told;
    Registration seven = loop.addDescriptor(7, nothing);
    const Registration nine = loop.addDescriptor(9, nothing);
    Registration watcher = loop.addWatcher(told.watcher());
    told.take();

    watcher.reset();
    EXPECT_THAT(told.take(), ElementsAre(-7, -9));
    seven.reset();
    EXPECT_THAT(told.take(), IsEmpty());
}

TEST(RunLoopWatcher, SeveralAreNotifiedSeparately) {
    RunLoop loop;
    Told first;
    Told second;
    Registration watcher = loop.addWatcher(first.watcher());
    Registration seven = loop.addDescriptor(7, nothing);
    const Registration late = loop.addWatcher(second.watcher());

    EXPECT_THAT(first.take(), ElementsAre(7));
    EXPECT_THAT(second.take(), ElementsAre(7));
    watcher.reset();
    seven.reset();
    EXPECT_THAT(first.take(), ElementsAre(-7));
    EXPECT_THAT(second.take(), ElementsAre(-7));
}

TEST(RunLoopWatcher, IsNotNotifiedOfTimers) {
    RunLoop loop;
    Told told;
    const Registration watcher = loop.addWatcher(told.watcher());

    const Registration timer = loop.addTimer(std::chrono::milliseconds(1), nothing);

    EXPECT_THAT(told.take(), IsEmpty());
}

TEST(RunLoopWatcher, ReceivesANumberRegisteredOnceMoreAsNew) {
    RunLoop loop;
    Told told;
    const Registration watcher = loop.addWatcher(told.watcher());
    Registration first = loop.addDescriptor(7, nothing);
    told.take();

    Registration second = loop.addDescriptor(7, nothing);
    EXPECT_THAT(told.take(), ElementsAre(-7, 7));
    first.reset();
    EXPECT_THAT(told.take(), IsEmpty());
    second.reset();
    EXPECT_THAT(told.take(), ElementsAre(-7));
}

TEST(RunLoopWatcher, MayLeaveDuringANotification) {
    RunLoop loop;
    Told told;
    Registration leaving;
    leaving = loop.addWatcher({[&leaving](int) { leaving.reset(); }, [](int) {}});
    const Registration staying = loop.addWatcher(told.watcher());

    const Registration seven = loop.addDescriptor(7, nothing);
    const Registration nine = loop.addDescriptor(9, nothing);

    EXPECT_THAT(told.take(), ElementsAre(7, 9));
}

// A pipe whose reading end stands for a connection.
struct Pipe {
    Pipe() { EXPECT_EQ(pipe2(ends.data(), O_NONBLOCK), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeReading();
        close(ends[1]);
    }

    int reading() const { return ends[0]; }
    void send() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
    bool receive() const {
        char character = 0;
        return read(ends[0], &character, 1) == 1;
    }
    void closeReading() {
        if (ends[0] >= 0) {
            close(ends[0]);
            ends[0] = -1;
        }
    }

    std::array<int, 2> ends{-1, -1};
};

// A host's event loop, as one that waits with epoll.
class EpollHost {
public:
    EpollHost(const EpollHost&) = delete;
    EpollHost& operator=(const EpollHost&) = delete;
    explicit EpollHost(RunLoop& loop)
        : mEpoll(epoll_create1(EPOLL_CLOEXEC)),
          mWatching(loop.addWatcher(
              {[this](int number) { add(number); }, [this](int number) { remove(number); }})) {}
    ~EpollHost() {
        mWatching.reset();
        close(mEpoll);
    }

    // Whether something that it watches is readable now.
    bool wakes() const {
        epoll_event event{};
        return epoll_wait(mEpoll, &event, 1, 0) == 1;
    }

private:
    void add(int number) const {
        epoll_event event{};
        event.events = EPOLLIN;
        EXPECT_EQ(epoll_ctl(mEpoll, EPOLL_CTL_ADD, number, &event), 0);
    }
    // The system has already removed a file that was closed, so a failure is correct there.
    void remove(int number) const { epoll_ctl(mEpoll, EPOLL_CTL_DEL, number, nullptr); }

    int mEpoll;
    Registration mWatching;
};

TEST(RunLoopHost, WakesForAReadableDescriptorUntilItIsHandled) {
    RunLoop loop;
    const Pipe pipe;
    int received = 0;
    const Registration registration =
        loop.addDescriptor(pipe.reading(), [&] { received += pipe.receive() ? 1 : 0; });
    const EpollHost host(loop);

    EXPECT_FALSE(host.wakes());
    pipe.send();
    EXPECT_TRUE(host.wakes());
    loop.tick();
    EXPECT_EQ(received, 1);
    EXPECT_FALSE(host.wakes());
}

TEST(RunLoopHost, DoesNotWakeForWhatIsNoLongerRegistered) {
    RunLoop loop;
    const Pipe pipe;
    Registration registration = loop.addDescriptor(pipe.reading(), nothing);
    const EpollHost host(loop);

    registration.reset();
    pipe.send();

    EXPECT_FALSE(host.wakes());
}

TEST(RunLoopHost, ToleratesADescriptorThatIsClosedFirst) {
    RunLoop loop;
    Pipe pipe;
    int calls = 0;
    Registration registration = loop.addDescriptor(pipe.reading(), [&calls] { ++calls; });
    const EpollHost host(loop);

    pipe.closeReading();
    loop.tick();
    registration.reset();

    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(host.wakes());
}

TEST(RunLoopHost, WakesForANumberUsedAgainBeforeTheOldOneIsUnregistered) {
    RunLoop loop;
    auto old = std::make_unique<Pipe>();
    const int number = old->reading();
    Registration stale = loop.addDescriptor(number, nothing);
    const EpollHost host(loop);
    old->closeReading();
    const Pipe fresh;
    ASSERT_EQ(fresh.reading(), number);

    const Registration registration = loop.addDescriptor(number, nothing);
    stale.reset();
    fresh.send();

    EXPECT_TRUE(host.wakes());
}

} // namespace
