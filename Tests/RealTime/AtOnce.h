/// All that a host does at once: sound on many threads, and everything else beside them.
#ifndef VARNO_TESTS_REALTIME_ATONCE_H
#define VARNO_TESTS_REALTIME_ATONCE_H

#include "Tests/RealTime/AudioClient.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace varno::test {

/// Each client processes on a thread of its own. The calling thread is the main thread of them all: it sets
/// values, pastes presets, saves and loads states, changes qualities, reads meters, and makes and ends other
/// instances.
class AtOnce {
public:
    /// @param others which are made and ended beside the clients; not empty; outlive this
    AtOnce(std::vector<std::unique_ptr<AudioClient>> clients, std::span<const AudioClientEntry> others);

    /// Returns after at least so many blocks of all threads together, when the main thread has had ten turns
    /// for each client on the average.
    void run(std::int64_t blocks);

    /// Blocks that were processed.
    std::int64_t blocks() const { return mBlocks; }
    /// Whether all samples put out were finite.
    bool isFinite() const { return mIsFinite; }
    /// The contracts that were broken, each with a line end.
    std::string complaints();

private:
    bool isOver(std::int64_t blocks) const;
    void makeAndEndAnother(std::mt19937& ioRandom) const;
    void process(AudioClient& client, std::mt19937::result_type seed, std::int64_t blocks);

    std::vector<std::unique_ptr<AudioClient>> mClients;
    std::span<const AudioClientEntry> mOthers;
    // Relaxed throughout: an order that these make would hide what the product lacks of it.
    std::atomic<std::int64_t> mBlocks{0};
    std::atomic<std::size_t> mTurns{0};
    std::atomic<bool> mIsFinite{true};
};

} // namespace varno::test

#endif
