/// The event loop that all editors of the module share where the system has none.
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
    /// @param undo removes the registration; must not throw.
    explicit Registration(std::function<void()> undo)
        : mUndo(std::move(undo)) {}
    Registration(Registration&& other) noexcept
        : mUndo(std::exchange(other.mUndo, nullptr)) {}
    Registration& operator=(Registration&& other) noexcept {
        Registration(std::move(other)).mUndo.swap(mUndo);
        return *this;
    }
    ~Registration() { reset(); }

    /// Removes the registration now; does nothing the second time. [main]
    void reset() {
        if (const auto undo = std::exchange(mUndo, nullptr)) {
            undo();
        }
    }

private:
    std::function<void()> mUndo;
};

/// Has no thread and never waits: a clock (an editor's timer, a host's event loop) drives it by tick().
/// Registrations may be made and removed at any time, inside callbacks too, and may outlive the loop.
class RunLoop {
public:
    using Callback = std::function<void()>;
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;

    /// Connects the loop with one that can wait, such as a host's: it is notified for which file descriptors
    /// to call tick(). Must not throw.
    struct Watcher {
        std::function<void(int descriptor)> onAdded;
        /// Called as soon as the number is removed, but the file may be closed already.
        std::function<void(int descriptor)> onRemoved;
    };

    /// The module's one loop, made by the first call and destroyed with its last holder. [main]
    static std::shared_ptr<RunLoop> shared();

    /// A loop of its own.
    explicit RunLoop(Clock clock = std::chrono::steady_clock::now);
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;
    ~RunLoop();

    /// Calls the handler on every tick, whether or not the descriptor is readable: a library may have read
    /// events that it has yet to handle. The descriptor stays the caller's; watchers receive a number that is
    /// registered once more as a new one. [main]
    [[nodiscard]] Registration addDescriptor(int descriptor, Callback handler);

    /// Calls the handler on the first tick after each period: once where several have passed. Zero is every
    /// tick. [main]
    [[nodiscard]] Registration addTimer(std::chrono::milliseconds period, Callback handler);

    /// The watcher receives each descriptor that is registered now or later, and the removal of each, also
    /// when the watcher itself is removed. [main]
    [[nodiscard]] Registration addWatcher(Watcher watcher);

    /// Calls every descriptor's handler, then those of the timers that are due. A handler that was removed
    /// meanwhile is not called, one that was added is called on the next tick. Called from a handler, it does
    /// nothing. An exception of a handler reaches the caller; the other handlers are called on the next tick.
    /// [main]
    void tick();

    /// Whether a tick is under way. [main]
    bool isTicking() const;

    /// Releases `object` when the tick that is under way has called its last handler, at once where there is
    /// none: what a handler works on outlives its call, even where that call gave it up. [main]
    void keepForTick(std::shared_ptr<void> object);

private:
    struct State;
    std::shared_ptr<State> mState;
};

} // namespace varno

#endif
