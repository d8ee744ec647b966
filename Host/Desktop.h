/// The desktop around an editor's view, as a front end offers it.
#ifndef VARNO_HOST_DESKTOP_H
#define VARNO_HOST_DESKTOP_H

#include <chrono>
#include <functional>

namespace varno {

/// Implemented by whoever runs an event loop, and given to a ViewContainer; outlives the editor in it. An
/// `owner` tells one watch or timer from another. Callbacks may start and end watches and timers. [main]
class Desktop {
public:
    using Wake = std::function<void()>;

    virtual ~Desktop() = default;
    /// The factor by which this desktop enlarges what it shows; 1 is the plain size.
    virtual double scale() const = 0;
    /// Calls `wake` whenever the file descriptor can be read.
    virtual void watch(int descriptor, const void* owner, Wake wake) = 0;
    /// Ends that watch, if there is one.
    virtual void unwatch(int descriptor, const void* owner) = 0;
    /// Calls `wake` every `period`, in the place of an earlier timer of the owner's.
    virtual void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) = 0;
    /// Ends that timer, if there is one.
    virtual void stopTimer(const void* owner) = 0;
};

} // namespace varno

#endif
