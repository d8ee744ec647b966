#ifndef VARNO_APPS_VARNO_PLAYER_CLOCKEDPLAYER_H
#define VARNO_APPS_VARNO_PLAYER_CLOCKEDPLAYER_H

#include "PacedBlocks.h"

#include <thread>

namespace varno {

/// Plays without a sound card: a thread of its own pulls the blocks in real time, by the system's clock.
/// Plays from its making to its end. Made and destroyed by one thread. [main]
class ClockedPlayer {
public:
    /// @param pull called on the player's thread until this object is destroyed
    /// @throws std::system_error where no thread can be had
    ClockedPlayer(const PlayerFormat& format, AudioPull pull);
    ClockedPlayer(const ClockedPlayer&) = delete;
    ClockedPlayer& operator=(const ClockedPlayer&) = delete;
    /// Returns once the last block is done.
    ~ClockedPlayer();

private:
    std::atomic<bool> mShallStop{false};
    std::thread mThread;
};

} // namespace varno

#endif
