/// An LV2 effect, loaded and ready to run.
#ifndef VARNO_BENCHMARKS_PEERS_LOADEDEFFECT_H
#define VARNO_BENCHMARKS_PEERS_LOADEDEFFECT_H

#include "Benchmarks/Peers/PeerTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace varno::bench {

/// Found in the system's and in LV2_PATH's bundles, instantiated and activated, with every port connected:
/// the audio to memory of its own, controls to their defaults and the peer's values, events to empty
/// sequences.
class LoadedEffect {
public:
    /// @param bufferFrames frames of every run
    /// @throws std::runtime_error that names what is missing
    LoadedEffect(const Peer& peer, double sampleRateHz, std::int32_t bufferFrames);
    LoadedEffect(const LoadedEffect&) = delete;
    LoadedEffect& operator=(const LoadedEffect&) = delete;
    ~LoadedEffect();

    /// Audio channels: the smaller number of inputs and outputs, 2 at most.
    std::size_t channels() const;
    /// Copies a buffer to the inputs and processes it. Inputs beyond the channels, which are side chains,
    /// hear silence. [audio]
    void run(const float* const* inputs);
    /// The outputs of the last run, one per channel.
    const float* output(std::size_t channel) const;

private:
    struct Parts;
    std::unique_ptr<Parts> mParts;
};

} // namespace varno::bench

#endif
