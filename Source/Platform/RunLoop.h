/// The event loop that all editors of the module share where the system does not give them one.
#ifndef VARNO_SOURCE_PLATFORM_RUNLOOP_H
#define VARNO_SOURCE_PLATFORM_RUNLOOP_H

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace varno {

/// Something registered: it stays registered as long as this object lives. Moves but does not copy. [main]
class Registration {
public:
    Registration() = default;
    /// @param undo takes the registration back; must not throw.
    explicit Registration(std::function<void()> undo)
        : mUndo(std::move(undo)) {}
    Registration(Registration&& other) noexcept
        : mUndo(std::exchange(other.mUndo, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        Registration(std::move(other)).mUndo.swap(mUndo);
        return *this;
    }
    ~Registration() { reset(); }

    /// Takes the registration back now; nothing the second time. [main]
    void reset() {
        if (const auto undo = std::exchange(mUndo, nullptr)) {
            undo();
        }
    }

private:
    std::function<void()> mUndo;
};

/// Has no thread and waits for nothing: whoever has a clock (an editor's timer, a host's event loop) drives
/// it by tick(). What is registered may come and go at any time, inside callbacks too, and may outlive the
/// loop.
class RunLoop {
public:
    using Callback = std::function<void()>;
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    /// Connects the loop with one that can wait, such as a host's: it is told which file descriptors to wake
    /// up for with tick(). Must not throw.
    struct Watcher {
        std::function<void(int descriptor)> onAdded;
        /// Comes as soon as the number is given up, but the file may be closed already.
        std::function<void(int descriptor)> onRemoved;
    };

    /// The module's one loop, made by the first who asks and gone with the last who holds it. [main]
    static std::shared_ptr<RunLoop> shared();

    /// A loop of its own.
    explicit RunLoop(Clock clock = std::chrono::steady_clock::now);
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    ~RunLoop();

    /// Calls the handler on every tick, whether or not the descriptor is readable: a library may have read
    /// already what it has yet to handle. The descriptor stays the caller's and is not touched; a number that
    /// is registered once more is told to the watchers as new. [main]
    [[nodiscard]] Registration addDescriptor(int descriptor, Callback handler);

    /// Calls the handler on the first tick after each period: once where several have passed. Zero is every
    /// tick. [main]
    [[nodiscard]] Registration addTimer(std::chrono::milliseconds period, Callback handler);

    /// The watcher is told of each descriptor there is and of each that comes; and for each of them, when it
    /// goes or when the watcher leaves, that it went. [main]
    [[nodiscard]] Registration addWatcher(Watcher watcher);

    /// Calls every descriptor's handler, then those of the timers that are due. What was removed meanwhile is
    /// not called any more, what was added comes on the next tick; called from a handler, it does nothing.
    /// What a handler throws is passed on, and the rest waits for the next tick. [main]
    void tick();

private:
    struct State;
    std::shared_ptr<State> mState;
};

} // namespace varno

#endif
