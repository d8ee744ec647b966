#ifndef VARNO_APPS_VARNO_LIVE_BACKENDCHOICE_H
#define VARNO_APPS_VARNO_LIVE_BACKENDCHOICE_H

#include "LiveBackend.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace varno {

/// The word for whichever sound system answers first.
inline constexpr std::string_view kAnyBackend = "auto";

/// A way to a sound system.
struct BackendEntry {
    std::string_view word; // on the command line: "jack"
    std::string_view name; // for people: "JACK"
    /// Throws SoundUnavailable.
    std::unique_ptr<LiveBackend> (*open)(const LiveRequest& request);
};

/// All of them, the preferred first.
std::span<const BackendEntry> backends();

/// Opens the sound system of that word, or with kAnyBackend the first one that can be had.
/// @throws SoundUnavailable which names what was tried and why it failed, in one line
std::unique_ptr<LiveBackend> openBackend(std::string_view word, const LiveRequest& request,
                                         std::span<const BackendEntry> entries = backends());

} // namespace varno

#endif
