#include "Render/Workers.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <optional>
#include <system_error>
#include <vector>

namespace varno {
namespace {

// The pieces that are still to be done, and how many threads take them. Allocates nothing after its
// construction. [any]
class Queue {
public:
    // @param threads more than these never join
    Queue(std::size_t count, std::size_t threads)
        : mCount(count) {
        mReturned.reserve(threads);
    }

    void join() {
        const std::lock_guard lock(mMutex);
        ++mThreads;
    }

    void leave() {
        const std::lock_guard lock(mMutex);
        --mThreads;
    }

    // Nothing where all pieces are taken; the thread has then left.
    std::optional<std::size_t> take() {
        const std::lock_guard lock(mMutex);
        if (!mReturned.empty()) {
            const std::size_t piece = mReturned.back();
            mReturned.pop_back();
            return piece;
        }
        if (mNext < mCount) {
            return mNext++;
        }
        --mThreads;
        return std::nullopt;
    }

    // Whether no other thread takes pieces. Stays true.
    bool isAlone() {
        const std::lock_guard lock(mMutex);
        return mThreads == 1;
    }

    // Gives a piece to the other threads, and leaves; false, with nothing done, where there is no other.
    bool leaveToOthers(std::size_t piece) {
        const std::lock_guard lock(mMutex);
        if (mThreads == 1) {
            return false;
        }
        --mThreads;
        mReturned.push_back(piece); // each thread returns one piece at most
        return true;
    }

private:
    std::mutex mMutex;
    std::size_t mCount;
    std::size_t mNext = 0;
    std::size_t mThreads = 0;
    std::vector<std::size_t> mReturned;
};

void workOn(Queue& queue, const Work& work) {
    while (const auto piece = queue.take()) {
        for (bool isAlone = queue.isAlone(); !work.attempt(*piece); isAlone = true) {
            if (queue.leaveToOthers(*piece)) {
                return;
            }
            if (isAlone) { // otherwise the memory of those that have left since may suffice
                work.refuse(*piece);
            }
        }
    }
}

// Nothing where the system refuses it.
std::jthread newThread(const StartThread& start, const std::function<void()>& run) {
    try {
        return start ? start(run) : std::jthread(run);
    } catch (const std::system_error&) {
        return {};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

} // namespace

void runWorkers(std::size_t count, std::size_t threads, const Work& work, const StartThread& start) {
    const std::size_t most = std::min(threads, count);
    Queue queue(count, most);
    std::vector<std::jthread> helpers; // the end of this function waits for them
    helpers.reserve(most);
    const std::function<void()> run = [&] { workOn(queue, work); };
    queue.join();
    while (helpers.size() + 1 < most) {
        queue.join(); // before it starts, so that no other thread takes itself for the last one
        helpers.push_back(newThread(start, run));
        if (!helpers.back().joinable()) {
            queue.leave();
            break;
        }
    }
    run();
}

} // namespace varno
