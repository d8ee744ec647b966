#ifndef VARNO_APPS_VARNO_RENDER_WORKERS_H
#define VARNO_APPS_VARNO_RENDER_WORKERS_H

#include <cstddef>
#include <functional>
#include <thread>

namespace varno {

/// What runWorkers() does with each of several pieces of work.
struct Work {
    /// Does what is left of one piece, from several threads at a time. @return false where memory was refused
    /// and another attempt is possible; must not throw
    std::function<bool(std::size_t piece)> attempt;
    /// Gives up the part of a piece at which its last attempt ended: the memory did not suffice although
    /// nothing else was under way. Another attempt follows. Must not throw.
    std::function<void(std::size_t piece)> refuse;
};

/// Starts a thread. @throws std::system_error or std::bad_alloc where the system refuses it
using StartThread = std::function<std::jthread(const std::function<void()>&)>;

/// Does the pieces 0 to count - 1 in this order on several threads, the calling one among them. Where the
/// system refuses a thread, fewer do the work. A thread whose attempt is refused memory ends and leaves the
/// piece to those that still work. The last thread refuses what fails while it is alone, and goes on.
/// @param threads at most, at least 1
/// @param start tests pass their own
void runWorkers(std::size_t count, std::size_t threads, const Work& work, const StartThread& start = {});

} // namespace varno

#endif
