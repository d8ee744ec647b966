#include "Platform/RunLoop.h"

#include "Platform/SharedInstance.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace varno {

namespace {

template<typename Entry>
using Owned = std::vector<std::shared_ptr<Entry>>;

// The present entries, to iterate over while entries are added and removed: a removed one is expired.
template<typename Entry>
std::vector<std::weak_ptr<Entry>> snapshot(const Owned<Entry>& entries) {
    return {entries.begin(), entries.end()};
}

// Calls `call` for each entry of the snapshot that still exists; the entry exists until its call returns.
template<typename Entry, typename Call>
void eachLeft(const std::vector<std::weak_ptr<Entry>>& entries, Call call) {
    for (const auto& entry : entries) {
        if (const auto left = entry.lock()) {
            call(*left);
        }
    }
}

} // namespace

struct RunLoop::State {
    // Whether a tick is under way, and what is kept until its end. Both outlive a loop that ends during a
    // tick.
    struct Tick {
        bool isUnderWay = false;
        std::vector<std::shared_ptr<void>> kept;
    };

    // A tick, for as long as it exists.
    class TickScope {
    public:
        explicit TickScope(std::shared_ptr<Tick> tick)
            : mTick(std::move(tick)) {
            mTick->isUnderWay = true;
        }
        TickScope(const TickScope&) = delete;
        TickScope& operator=(const TickScope&) = delete;
        ~TickScope() {
            mTick->isUnderWay = false;
            // What these objects release while they end goes at once.
            std::exchange(mTick->kept, {}).clear();
        }

    private:
        std::shared_ptr<Tick> mTick;
    };

    struct Descriptor {
        int number;
        Callback handler;
    };
    struct Timer {
        std::chrono::milliseconds period;
        TimePoint due;
        Callback handler;
    };

    Clock clock;
    std::shared_ptr<Tick> tick = std::make_shared<Tick>();
    Owned<Descriptor> descriptors;
    Owned<Timer> timers;
    Owned<Watcher> watchers;

    std::set<int> numbers() const {
        std::set<int> found;
        for (const auto& descriptor : descriptors) {
            found.insert(descriptor->number);
        }
        return found;
    }

    void tell(std::function<void(int)> Watcher::*what, int number) const {
        eachLeft(snapshot(watchers), [&](const Watcher& watcher) { (watcher.*what)(number); });
    }

    // Adds an entry to its list; the registration removes it and then calls `afterwards`.
    template<typename Entry, typename Afterwards>
    static Registration add(const std::shared_ptr<State>& state, Owned<Entry> State::*list, Entry entry,
                            Afterwards afterwards) {
        auto owned = std::make_shared<Entry>(std::move(entry));
        std::weak_ptr<Entry> known = owned;
        ((*state).*list).push_back(std::move(owned));
        return Registration([loop = std::weak_ptr(state), list, known, afterwards] {
            const auto current = loop.lock();
            const auto leaving = known.lock();
            if (current && leaving) {
                std::erase((*current).*list, leaving);
                afterwards(*current, *leaving);
            }
        });
    }
};

std::shared_ptr<RunLoop> RunLoop::shared() {
    static std::weak_ptr<RunLoop> instance;
    return sharedInstance(instance, [] { return std::make_shared<RunLoop>(); });
}

RunLoop::RunLoop(Clock clock)
    : mState(std::make_shared<State>()) {
    mState->clock = std::move(clock);
}

RunLoop::~RunLoop() = default;

Registration RunLoop::addDescriptor(int descriptor, Callback handler) {
    // A number that is still registered may have been closed and be in use for another file.
    if (mState->numbers().count(descriptor) > 0) {
        mState->tell(&Watcher::onRemoved, descriptor);
    }
    auto registration =
        State::add(mState, &State::descriptors, State::Descriptor{descriptor, std::move(handler)},
                   [](const State& state, const State::Descriptor& gone) {
                       if (state.numbers().count(gone.number) == 0) {
                           state.tell(&Watcher::onRemoved, gone.number);
                       }
                   });
    mState->tell(&Watcher::onAdded, descriptor);
    return registration;
}

Registration RunLoop::addTimer(std::chrono::milliseconds period, Callback handler) {
    return State::add(mState, &State::timers,
                      State::Timer{period, mState->clock() + period, std::move(handler)},
                      [](const State&, const State::Timer&) {});
}

Registration RunLoop::addWatcher(Watcher watcher) {
    const auto tellOfEach = [](const State& state, const std::function<void(int)>& call) {
        const std::set<int> numbers = state.numbers();
        std::for_each(numbers.begin(), numbers.end(), call);
    };
    tellOfEach(*mState, watcher.onAdded);
    return State::add(
        mState, &State::watchers, std::move(watcher),
        [tellOfEach](const State& state, const Watcher& gone) { tellOfEach(state, gone.onRemoved); });
}

bool RunLoop::isTicking() const {
    return mState->tick->isUnderWay;
}

void RunLoop::keepForTick(std::shared_ptr<void> object) {
    if (isTicking()) {
        mState->tick->kept.push_back(std::move(object));
    }
}

void RunLoop::tick() {
    if (isTicking()) {
        return;
    }
    // A handler may destroy the loop: from here on no member is used.
    const State::TickScope scope(mState->tick);
    const auto descriptors = snapshot(mState->descriptors);
    const auto timers = snapshot(mState->timers);
    const TimePoint now = mState->clock();
    eachLeft(descriptors, [](const State::Descriptor& descriptor) { descriptor.handler(); });
    eachLeft(timers, [now](State::Timer& timer) {
        if (timer.due <= now) {
            // On the grid of the period, unless ticks are less frequent.
            const TimePoint next = timer.due + timer.period;
            timer.due = next > now ? next : now + timer.period;
            timer.handler();
        }
    });
}

} // namespace varno
