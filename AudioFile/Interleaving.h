#ifndef VARNO_AUDIOFILE_INTERLEAVING_H
#define VARNO_AUDIOFILE_INTERLEAVING_H

#include <cstddef>

namespace varno {

/// One channel among those of interleaved frames.
struct ChannelPlace {
    std::size_t channel; // from 0
    std::size_t channels;
};

/// Copies one channel of interleaved frames to `out`, each sample by way of `convert`. The usual counts of
/// channels are written out, since the compiler makes vector code only where it knows how far samples lie
/// apart.
template<class In, class Out, class Convert>
void takeChannel(const In* interleaved, ChannelPlace place, std::size_t frames, Out* out, Convert convert) {
    const auto take = [&](std::size_t channels) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            out[frame] = convert(interleaved[frame * channels + place.channel]);
        }
    };
    if (place.channels == 1) {
        take(1);
    } else if (place.channels == 2) {
        take(2);
    } else {
        take(place.channels);
    }
}

/// Puts planar channels together to interleaved frames. @param sampleAt tells the sample of a channel and
/// frame
template<class Out, class SampleAt>
void interleave(std::size_t channels, std::size_t frames, Out* out, SampleAt sampleAt) {
    const auto put = [&](std::size_t count) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            for (std::size_t channel = 0; channel < count; ++channel) {
                out[frame * count + channel] = sampleAt(channel, frame);
            }
        }
    };
    if (channels == 1) {
        put(1);
    } else if (channels == 2) {
        put(2);
    } else {
        put(channels);
    }
}

} // namespace varno

#endif
