#include "Tests/RealTime/AtOnce.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <utility>

namespace varno::test {
namespace {

constexpr std::size_t kTurnsPerClient = 10;
// In which turns of the main thread an instance is made and ended.
constexpr std::size_t kTurnsPerInstance = 16;

bool areFinite(std::span<const float> samples) {
    return std::ranges::all_of(samples, [](float sample) { return std::isfinite(sample); });
}

} // namespace

AtOnce::AtOnce(std::vector<std::unique_ptr<AudioClient>> clients, std::span<const AudioClientEntry> others)
    : mClients(std::move(clients)),
      mOthers(others) {
}

void AtOnce::run(std::int64_t blocks) {
    std::vector<std::thread> threads;
    threads.reserve(mClients.size());
    for (std::size_t i = 0; i < mClients.size(); ++i) {
        threads.emplace_back(
            [this, i, blocks] { process(*mClients[i], static_cast<unsigned>(i + 1), blocks); });
    }
    std::mt19937 random(20261125);
    for (std::size_t turn = 0; !isOver(blocks); ++turn) {
        mClients[random() % mClients.size()]->disturb(random);
        if (turn % kTurnsPerInstance == 0) {
            makeAndEndAnother(random);
        }
        mTurns.fetch_add(1, std::memory_order_relaxed);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void AtOnce::makeAndEndAnother(std::mt19937& ioRandom) const {
    constexpr int kFrames = 64;
    const auto other = mOthers[ioRandom() % mOthers.size()].make();
    other->prepare(kFrames, ioRandom);
    other->process(kFrames);
}

bool AtOnce::isOver(std::int64_t blocks) const {
    return mBlocks.load(std::memory_order_relaxed) >= blocks &&
           mTurns.load(std::memory_order_relaxed) >= mClients.size() * kTurnsPerClient;
}

void AtOnce::process(AudioClient& client, std::mt19937::result_type seed, std::int64_t blocks) {
    std::mt19937 random(seed);
    while (!isOver(blocks)) {
        const int frames = 1 + static_cast<int>(random() % AudioClient::kLongestBlock);
        client.prepare(frames, random);
        client.process(frames);
        if (!areFinite(client.output(0, frames)) || !areFinite(client.output(1, frames))) {
            mIsFinite.store(false, std::memory_order_relaxed);
        }
        mBlocks.fetch_add(1, std::memory_order_relaxed);
    }
}

std::string AtOnce::complaints() {
    std::string text;
    for (const auto& client : mClients) {
        text += client->complaints();
    }
    return text;
}

} // namespace varno::test
