/// The event loop of a host with editors on the screen.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_HOSTLOOP_H
#define VARNO_TESTS_INTEGRATION_EDITOR_HOSTLOOP_H

#include "Host/ViewContainer.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/XClient.h"

#include <cstddef>
#include <functional>
#include <map>
#include <vector>

namespace varno::test {

/// Runs only when a test calls it.
class HostLoop : public Desktop {
public:
    /// The client whose requests are carried out before each turn.
    explicit HostLoop(const XClient& client)
        : mClient(client) {}

    /// What a host does in each turn for one of its editors, until it is removed.
    void add(const void* owner, std::function<void()> turn) { mTurns[owner] = std::move(turn); }
    void remove(const void* owner) { mTurns.erase(owner); }

    /// Everything once: descriptors that can be read, timers that are due, then the editors.
    void turn();
    /// Turns until the condition holds; false where it still does not at a generous deadline.
    template<typename Condition>
    bool await(Condition condition) {
        return eventually([&] {
            turn();
            return condition();
        });
    }

    std::size_t countWatches() const { return mWatches.size(); }
    std::size_t countTimers() const { return mTimers.size(); }
    void setScale(double scale) { mScale = scale; }

    double scale() const override { return mScale; }
    void watch(int descriptor, const void* owner, Wake wake) override;
    void unwatch(int descriptor, const void* owner) override;
    void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) override;
    void stopTimer(const void* owner) override;

private:
    using Key = std::pair<int, const void*>;
    struct Timer {
        std::chrono::milliseconds period{0};
        std::chrono::steady_clock::time_point due;
        Wake wake;
    };

    void wakeWatches();
    void wakeTimers();

    const XClient& mClient;
    double mScale = 1.0;
    std::map<Key, Wake> mWatches;
    std::map<const void*, Timer> mTimers;
    std::map<const void*, std::function<void()>> mTurns;
};

} // namespace varno::test

#endif
